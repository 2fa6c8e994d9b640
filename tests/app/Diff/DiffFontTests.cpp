#include <gtest/gtest.h>

#include <QCoreApplication>

#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

TEST(DiffFont, DiffViewsTakeTheNewFontAndWidenTheirGutter) {
  auto& prefs = Preferences::shared();
  prefs.setValue(QStringLiteral("diffFontSize"), 9);
  DiffTextView plain;
  CommitTextDiffView staging;
  const int plainGutter = plain.gutterWidth();
  const int stagingGutter = staging.gutterWidth();
  plain.setRows({});  // lays the gutter out
  const int textStart = plain.viewport()->x();
  ASSERT_EQ(plain.font().pointSize(), 9);

  // Writing the key alone changes nothing until the preferences window announces it.
  prefs.setValue(QStringLiteral("diffFontSize"), 24);
  EXPECT_EQ(plain.font().pointSize(), 9);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffTextViewFontChanged);
  QCoreApplication::processEvents();

  EXPECT_EQ(plain.font().pointSize(), 24);
  EXPECT_EQ(staging.font().pointSize(), 24);
  EXPECT_GT(plain.gutterWidth(), plainGutter);
  EXPECT_GT(staging.gutterWidth(), stagingGutter);
  // The text moves right with the wider gutter.
  EXPECT_EQ(plain.viewport()->x() - textStart, plain.gutterWidth() - plainGutter);
  prefs.remove(QStringLiteral("diffFontSize"));
}
