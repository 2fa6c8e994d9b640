#include <gtest/gtest.h>

#include <QSignalSpy>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "LocalChangesPage.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

TEST(LocalChangesDiffSettings, TheShownDiffIsReadAgainWithTheNewContext) {
  TempRepository repo;
  QByteArray text;
  for (int i = 1; i <= 20; ++i) text += "line " + QByteArray::number(i) + "\n";
  repo.commitFile(QStringLiteral("a.txt"), text, QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.txt"), QByteArray(text).replace("line 10\n", "line ten\n"));

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.show();
  ASSERT_TRUE(page.load());
  QSignalSpy diff(&view, &StageFileViewController::diffLoaded);
  ASSERT_TRUE(view.unstagedList()->selectFile(QStringLiteral("a.txt")));
  ASSERT_TRUE(diff.count() > 0 || diff.wait(10000));
  EXPECT_TRUE(view.diffView()->toPlainText().contains(QStringLiteral("line 7")));

  Preferences::shared().setValue(QStringLiteral("contextSize"), 1);
  diff.clear();
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffContextSizeChanged);
  ASSERT_TRUE(diff.wait(10000));
  EXPECT_FALSE(view.diffView()->toPlainText().contains(QStringLiteral("line 7")));
  EXPECT_TRUE(view.diffView()->toPlainText().contains(QStringLiteral("line 9")));
  Preferences::shared().remove(QStringLiteral("contextSize"));
}
