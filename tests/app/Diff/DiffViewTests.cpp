#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTextBlock>

#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Models/PatchParser.h"
#include "Models/XPatch.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "support/TempRepository.h"

TEST(UnifiedDiffRows, NumbersFollowTheHunkAndNoNewlineIsShown) {
  TempRepository repo;
  repo.commitFile("f.txt", "one\ntwo\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\n", "base");
  repo.writeFile("f.txt", "one\nTWO\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\neleven");
  const QString diff = repo.git({"diff", "--no-color", "--unified=1"});
  const XPatchPtr patch = PatchParser().parse(diff, XFilePatch::Location::unstaged);
  ASSERT_TRUE(patch);
  ASSERT_EQ(patch->files.size(), 1u);
  const auto rows = unifiedDiffRows(patch->files[0]);
  using K = UnifiedDiffRow::Kind;
  std::vector<std::tuple<K, qint64, qint64, QString>> got;
  for (const auto& r : rows) got.emplace_back(r.kind, r.oldLine, r.newLine, r.text);
  const std::vector<std::tuple<K, qint64, qint64, QString>> expected = {
      {K::hunkHeader, 0, 0, QStringLiteral("@@ -1,3 +1,3 @@")},
      {K::context, 1, 1, QStringLiteral("one")},
      {K::removed, 2, 0, QStringLiteral("two")},
      {K::added, 0, 2, QStringLiteral("TWO")},
      {K::context, 3, 3, QStringLiteral("three")},
      {K::hunkHeader, 0, 0, QStringLiteral("@@ -10,1 +10,2 @@ nine")},
      {K::context, 10, 10, QStringLiteral("ten")},
      {K::added, 0, 11, QStringLiteral("eleven")},
      {K::noNewline, 0, 0, QStringLiteral("\\ No newline at end of file")},
  };
  EXPECT_EQ(got, expected);

  DiffTextView view;
  view.setRows(rows);
  EXPECT_EQ(view.document()->blockCount(), static_cast<int>(rows.size()));
  EXPECT_EQ(view.document()->findBlockByNumber(3).text(), QStringLiteral("+TWO"));
}

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
