#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "LocalChangesPage.h"
#include "Models/GitModuleSettings.h"

namespace {
QString status(const TempRepository& repo) {
  return repo.git({QStringLiteral("status"), QStringLiteral("--porcelain")});
}
}  // namespace

// Keyboard and buttons move whole files between the lists, as git sees it, and discard
// asks with the alert's texts before it throws anything away.
TEST(StageFileViewController, StageUnstageAndDiscardFiles) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("base b"));
  repo.writeFile(QStringLiteral("a.txt"), "a changed\n");
  repo.writeFile(QStringLiteral("b.txt"), "b changed\n");
  repo.writeFile(QStringLiteral("new.txt"), "new\n");

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.resize(1000, 700);
  view.show();
  ASSERT_TRUE(page.load());
  EXPECT_EQ(view.unstagedLabel()->text(), QStringLiteral("Unstaged (3)"));
  EXPECT_EQ(view.stagedLabel()->text(), QStringLiteral("Staged (0)"));

  // Selecting a file shows its diff.
  ASSERT_TRUE(waitFor(&view, SIGNAL(diffLoaded()), [&] {
    ASSERT_TRUE(view.unstagedList()->selectFile(QStringLiteral("a.txt")));
  }));
  EXPECT_TRUE(view.diffView()->toPlainText().contains(u"\na changed"));

  // Space stages the selected file.
  view.unstagedList()->setFocus();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::keyClick(view.unstagedList(), Qt::Key_Space); }));
  EXPECT_TRUE(status(repo).contains(u"M  a.txt"));
  EXPECT_EQ(view.stagedLabel()->text(), QStringLiteral("Staged (1)"));
  EXPECT_EQ(view.commitBox()->commitButton()->text(), QStringLiteral("Commit 1 File"));

  // Return in the staged list takes it back out.
  ASSERT_TRUE(view.stagedList()->selectFile(QStringLiteral("a.txt")));
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::keyClick(view.stagedList(), Qt::Key_Return); }));
  EXPECT_TRUE(status(repo).contains(u" M a.txt"));

  // Discard: a refusal keeps the change, a confirmation throws it away.
  QStringList asked;
  bool answer = false;
  view.setConfirmation([&](const QString& message, const QString& informative, const QString& button) {
    asked << message << informative << button;
    return answer;
  });
  ASSERT_TRUE(view.unstagedList()->selectFile(QStringLiteral("b.txt")));
  view.discard({view.unstagedList()->currentFile()});
  EXPECT_EQ(asked, (QStringList{QStringLiteral("Do you want to discard all your changes in the selected files?"),
                                QStringLiteral("All uncommitted changes will be lost."), QStringLiteral("Discard")}));
  EXPECT_EQ(repo.readFile(QStringLiteral("b.txt")), "b changed\n");
  answer = true;
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { view.discard({view.unstagedList()->currentFile()}); }));
  EXPECT_EQ(repo.readFile(QStringLiteral("b.txt")), "b\n");

  // "Stage" without a selection stages everything listed.
  view.unstagedList()->clearSelection();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::mouseClick(view.stageButton(), Qt::LeftButton); }));
  EXPECT_EQ(status(repo), QStringLiteral("M  a.txt\nA  new.txt\n"));
  EXPECT_EQ(view.unstagedLabel()->text(), QStringLiteral("Unstaged (0)"));
  EXPECT_EQ(view.commitBox()->commitButton()->text(), QStringLiteral("Commit 2 Files"));
}

// The commit box: the draft survives a reopen, amend shows the last message and gives the
// draft back, Ctrl+Return commits what is staged and empties the box.
TEST(StageFileViewController, CommitWithTheKeyboardAndAmendKeepsTheDraft) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("First commit"));
  repo.writeFile(QStringLiteral("a.txt"), "a2\n");
  repo.git({QStringLiteral("add"), QStringLiteral("a.txt")});

  {
    LocalChangesPage first(repo);
    first->commitBox()->subjectField()->setText(QStringLiteral("Draft subject"));
    first->commitBox()->descriptionField()->setPlainText(QStringLiteral("Draft body"));
  }
  EXPECT_EQ(GitModuleSettings::load(repo.module()).draftMessage, QStringLiteral("Draft subject\n\nDraft body"));

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.show();
  ASSERT_TRUE(page.load());
  CommitController* box = view.commitBox();
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Draft subject"));

  // The last message is read by a job; the list is read again once it is shown.
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { box->amendBox()->click(); }));
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("First commit"));
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { box->amendBox()->click(); }));
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Draft subject"));
  EXPECT_EQ(box->descriptionField()->toPlainText(), QStringLiteral("Draft body"));

  box->subjectField()->setText(QStringLiteral("Change a"));

  const QString before = repo.headSha();
  box->subjectField()->setFocus();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::keyClick(box->subjectField(), Qt::Key_Return, Qt::ControlModifier); }));
  EXPECT_NE(repo.headSha(), before);
  EXPECT_EQ(repo.git({QStringLiteral("log"), QStringLiteral("-1"), QStringLiteral("--format=%B")}).trimmed(),
            QStringLiteral("Change a\n\nDraft body"));
  EXPECT_TRUE(box->subjectField()->text().isEmpty());
  EXPECT_TRUE(GitModuleSettings::load(repo.module()).draftMessage.isEmpty());
  EXPECT_EQ(view.stagedLabel()->text(), QStringLiteral("Staged (0)"));
  EXPECT_EQ(box->commitButton()->text(), QStringLiteral("Commit"));
}
