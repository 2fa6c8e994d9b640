#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffSelectionPopoverController.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Jobs/JobQueue.h"
#include "LocalChangesPage.h"
#include "support/TempRepository.h"

namespace {

class ChangesViewEdges : public ::testing::Test {
 protected:
  void open() {
    page = std::make_unique<LocalChangesPage>(repo);
    view = page->view();
    view->resize(1200, 700);
    view->show();
    ASSERT_TRUE(page->load());
  }
  void showDiff(const QString& path) {
    QSignalSpy loaded(view, &StageFileViewController::diffLoaded);
    ASSERT_TRUE(view->unstagedList()->selectFile(path)) << path.toStdString();
    ASSERT_TRUE(loaded.wait(10000));
  }
  std::shared_ptr<JobQueue> queue() { return page->controller().jobQueue(); }

  TempRepository repo;
  std::unique_ptr<LocalChangesPage> page;
  StageFileViewController* view = nullptr;
};

QByteArray png() {
  QImage image(4, 4, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes;
}

}  // namespace

TEST_F(ChangesViewEdges, ANameBeyondAsciiHasItsTitle) {
  const QString name = QStringLiteral("d\u00e9j\u00e0 vu.txt");
  repo.commitFile(name, "one\n", QStringLiteral("base"));
  repo.writeFile(name, "two\n");
  open();
  showDiff(name);
  EXPECT_EQ(view->diffPane()->title(), name);
  EXPECT_TRUE(view->diffView()->document()->firstBlock().text().contains(name)) << view->diffView()->toPlainText().toStdString();
}

TEST_F(ChangesViewEdges, AModifiedImageThatDoesNotDecodeIsNotCalledDeleted) {
  repo.commitFile(QStringLiteral("pic.png"), png(), QStringLiteral("base"));
  repo.writeFile(QStringLiteral("pic.png"), QByteArray("\x89PNG\r\n\x1a\n broken", 16));
  open();
  showDiff(QStringLiteral("pic.png"));
  ASSERT_TRUE(view->diffPane()->isShowingImages());
  EXPECT_FALSE(view->diffPane()->hasNewImage());
  EXPECT_NE(view->diffPane()->newImageText(), QStringLiteral("Deleted"));
  EXPECT_EQ(view->diffPane()->newImageText(), QStringLiteral("This image cannot be shown"));
}

TEST_F(ChangesViewEdges, TheHunkDiscardAlertSpeaksOfTheHunk) {
  repo.commitFile(QStringLiteral("f.txt"), "a\nb\nc\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("f.txt"), "a\nB\nc\nd\n");
  open();
  showDiff(QStringLiteral("f.txt"));
  CommitTextDiffView* text = view->diffView();
  int row = -1;
  for (QTextBlock block = text->document()->firstBlock(); block.isValid(); block = block.next()) {
    // The added last line, with or without a marker in front.
    if (block.text() == QStringLiteral("d") || block.text() == QStringLiteral("+d")) row = block.blockNumber();
  }
  ASSERT_GE(row, 0);
  QTest::mouseMove(text->viewport(), QPoint(40, text->cursorRect(QTextCursor(text->document()->findBlockByNumber(row))).center().y()));
  ASSERT_TRUE(text->activeChunk());
  ASSERT_FALSE(text->activeChunk()->manualSelection);

  QStringList asked;
  view->setConfirmation([&](const QString& message, const QString&, const QString& button) {
    asked << message << button;
    return false;
  });
  QTest::mouseClick(text->stageBar()->discardButton(), Qt::LeftButton);
  EXPECT_EQ(asked, (QStringList{QStringLiteral("Do you want to discard the changes in this hunk?"), QStringLiteral("Discard Hunk")}));
  EXPECT_EQ(repo.readFile(QStringLiteral("f.txt")), QByteArray("a\nB\nc\nd\n"));
}

// The merge's message fills the empty fields; an abort takes it back, unless the user
// wrote their own meanwhile.
TEST(CommitBoxMerge, AnAbortedMergeTakesItsMessageBack) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  CommitController box(repo.module(), std::make_shared<JobQueue>());
  const CommitMessage merge{QStringLiteral("Merge branch 'topic'"), QStringLiteral("# Conflicts:\n#\ta.txt")};
  box.setRepositoryState(RepositoryState::MergeInProgress{}, merge);
  ASSERT_EQ(box.subjectField()->text(), merge.subject);
  box.setRepositoryState(RepositoryState::Ok{}, std::nullopt);
  EXPECT_TRUE(box.subjectField()->text().isEmpty());
  EXPECT_TRUE(box.descriptionField()->toPlainText().isEmpty());

  box.setRepositoryState(RepositoryState::MergeInProgress{}, merge);
  ASSERT_EQ(box.subjectField()->text(), merge.subject);
  box.subjectField()->setText(QStringLiteral("My own words"));
  box.setRepositoryState(RepositoryState::Ok{}, std::nullopt);
  EXPECT_EQ(box.subjectField()->text(), QStringLiteral("My own words"));
}

// A stage says how it went in the status bar and the activity manager: done, or why not.
TEST_F(ChangesViewEdges, StagingReportsItsOutcome) {
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  open();
  // The newest job of the operation; refreshes follow it in the history.
  const auto lastJob = [&](const QString& name) -> std::shared_ptr<Job> {
    const auto jobs = queue()->userJobs();
    for (auto it = jobs.rbegin(); it != jobs.rend(); ++it) {
      if ((*it)->name() == name) return *it;
    }
    return nullptr;
  };

  QSignalSpy reloaded(view, &StageFileViewController::reloaded);
  view->stage(view->unstagedList()->files());
  ASSERT_TRUE(reloaded.wait(10000));
  const std::shared_ptr<Job> staged = lastJob(QStringLiteral("Stage"));
  ASSERT_TRUE(staged);
  EXPECT_EQ(staged->progress().message(), QStringLiteral("done"));
  EXPECT_EQ(staged->progress().state(), JobProgressState::succeeded);

  repo.writeFile(QStringLiteral(".git/index.lock"), "");
  view->setConfirmation([](const QString&, const QString&, const QString&) { return true; });
  view->unstage(view->stagedList()->files());
  std::shared_ptr<Job> unstaged;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    unstaged = lastJob(QStringLiteral("Unstage"));
    return unstaged && unstaged->status() == Job::Status::finished;
  }, 10000));
  EXPECT_EQ(unstaged->progress().state(), JobProgressState::failed);
  EXPECT_TRUE(unstaged->progress().message().startsWith(QStringLiteral("failed: "))) << unstaged->progress().message().toStdString();
  EXPECT_TRUE(unstaged->progress().output().contains(QStringLiteral("index.lock")));
}

TEST_F(ChangesViewEdges, WithNothingSelectedTheButtonsSayAll) {
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  repo.writeFile(QStringLiteral("b.txt"), "new\n");
  open();
  EXPECT_EQ(view->stageButton()->text(), QStringLiteral("Stage All"));
  EXPECT_EQ(view->unstageButton()->text(), QStringLiteral("Unstage All"));
  showDiff(QStringLiteral("a.txt"));
  EXPECT_EQ(view->stageButton()->text(), QStringLiteral("Stage"));
  view->unstagedList()->clearSelection();
  EXPECT_EQ(view->stageButton()->text(), QStringLiteral("Stage All"));
}

TEST_F(ChangesViewEdges, IgnoreIsOfferedForNewFilesOnly) {
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  repo.writeFile(QStringLiteral("new.txt"), "new\n");
  open();
  const auto titlesFor = [&](const QString& path) {
    EXPECT_TRUE(view->unstagedList()->selectFile(path));
    std::unique_ptr<QMenu> menu(view->contextMenu(view->unstagedList()));
    QStringList titles;
    for (QAction* action : menu->actions()) titles << action->text();
    return titles;
  };
  EXPECT_TRUE(titlesFor(QStringLiteral("new.txt")).contains(QStringLiteral("Ignore")));
  EXPECT_FALSE(titlesFor(QStringLiteral("a.txt")).contains(QStringLiteral("Ignore")));
}

TEST_F(ChangesViewEdges, StagingTheShownFileShowsTheNextOne) {
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("base b"));
  repo.writeFile(QStringLiteral("a.txt"), "a changed\n");
  repo.writeFile(QStringLiteral("b.txt"), "b changed\n");
  open();
  showDiff(QStringLiteral("a.txt"));
  QSignalSpy loaded(view, &StageFileViewController::diffLoaded);
  view->stage({view->unstagedList()->currentFile()});
  ASSERT_TRUE(QTest::qWaitFor([&] { return !loaded.isEmpty() && view->unstagedList()->files().size() == 1; }, 10000));
  ASSERT_TRUE(view->unstagedList()->currentFile());
  EXPECT_EQ(view->unstagedList()->currentFile()->path, QStringLiteral("b.txt"));
  EXPECT_TRUE(view->diffView()->toPlainText().contains(QStringLiteral("b changed")));
}
