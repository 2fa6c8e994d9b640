#include <gtest/gtest.h>

#include <algorithm>

#include <QSignalSpy>
#include <QTest>
#include <QBuffer>
#include <QImage>
#include <QTextBlock>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controllers/Repository/NotificationBar.h"
#include "ViewTestSupport.h"
#include "UI/JelvDocument.h"
#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Controls/RepositoryStatusBar.h"
#include "Git/Commands/RepositoryStatus/GetPathsStatusGitCommand.h"
#include "Git/Commands/RunGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "core/Refresh/LaunchRecorder.h"
#include "support/TempRepository.h"

namespace {

// A history with a side branch merged back, a tag, and a conflicting merge under way.
void buildHistory(TempRepository& repo) {
  repo.commitFile(QStringLiteral("a.txt"), "one\n", QStringLiteral("Initial"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("topic")});
  repo.commitFile(QStringLiteral("b.txt"), "topic\n", QStringLiteral("Topic work"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.commitFile(QStringLiteral("a.txt"), "one\ntwo\n", QStringLiteral("Main work"));
  repo.git({QStringLiteral("merge"), QStringLiteral("-q"), QStringLiteral("--no-ff"), QStringLiteral("topic"), QStringLiteral("-m"),
            QStringLiteral("Merge topic")});
  repo.git({QStringLiteral("tag"), QStringLiteral("v1.0")});
}

}  // namespace

TEST(JelvDocument, ShowsHistoryWithLabelsDetailsAndTheStatusLine) {
  TempRepository repo;
  buildHistory(repo);
  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));

  EXPECT_EQ(view.localChangesView()->diffPane()->message(), QStringLiteral("No local changes"));
  auto* model = view.commitList()->commitModel();
  EXPECT_EQ(model->rowCount(), 4);
  EXPECT_EQ(model->revision(0)->message(), QStringLiteral("Merge topic"));
  EXPECT_TRUE(model->decoration(0).isHead);
  QStringList labels;
  for (const auto& ref : model->decoration(0).references) labels << ref.reference->name;
  labels.sort();
  EXPECT_EQ(labels, (QStringList{"main", "v1.0"}));
  // The finished refresh stays on the status line for two seconds, then the repository line.
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.statusBar()->text() == QStringLiteral("repo: main"); }, 5000))
      << view.statusBar()->text().toStdString();
  EXPECT_TRUE(view.notificationBar()->isHidden());

  // HEAD is selected on load; its details and files follow.
  ASSERT_TRUE(view.commitList()->currentRevision());
  if (view.revisionFiles()->files().empty()) {
    ASSERT_TRUE(waitFor(view, &JelvDocument::commitDetailsLoaded));
  }
  EXPECT_TRUE(view.revisionHeader()->toPlainText().contains(QStringLiteral("Merge topic")));

  // Selecting the root shows its file as added.
  ASSERT_TRUE(view.commitList()->selectSha(*Sha::fromHex(repo.git({QStringLiteral("rev-list"), QStringLiteral("--max-parents=0"), QStringLiteral("HEAD")}).trimmed())));
  ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  ASSERT_EQ(view.revisionFiles()->files().size(), 1u);
  EXPECT_EQ(view.revisionFiles()->files()[0]->path, QStringLiteral("a.txt"));
  EXPECT_EQ(view.diffView()->document()->findBlockByNumber(1).text(), QStringLiteral("+one"));
}

TEST(JelvDocument, LocalChangesAndAMergeInProgress) {
  TempRepository repo;
  buildHistory(repo);
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("other"), QStringLiteral("HEAD~2")});
  repo.commitFile(QStringLiteral("a.txt"), "one\nother\n", QStringLiteral("Other change"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.git({QStringLiteral("merge"), QStringLiteral("other")}, true);  // conflicts
  repo.writeFile(QStringLiteral("new file é.txt"), "fresh\n");

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  EXPECT_FALSE(view.notificationBar()->isHidden());
  EXPECT_FALSE(view.notificationBar()->message().isEmpty());
  EXPECT_EQ(view.sidebar()->localChangesItem()->text(1), QString::number(view.controller()->repositoryStatus()->changedFilesCount));

  view.showLocalChanges();
  StageFileViewController* local = view.localChangesView();
  // The page learns the state from the repository's status: the merge message waits.
  EXPECT_EQ(local->commitBox()->subjectField()->text(), QStringLiteral("Merge branch 'other'"));
  FileListViewController* unstaged = local->unstagedList();
  const ChangedFileList files = unstaged->files();
  auto untracked = std::find_if(files.begin(), files.end(), [](const ChangedFilePtr& f) { return f->isNew; });
  ASSERT_NE(untracked, files.end());
  EXPECT_EQ((*untracked)->path, QStringLiteral("new file é.txt"));
  ASSERT_TRUE(unstaged->selectFile((*untracked)->path));
  EXPECT_TRUE(QTest::qWaitFor([&] { return local->diffView()->document()->findBlockByNumber(2).text() == QStringLiteral("fresh"); }, 10000));

  // Work done on the page reaches the sidebar's count without a full refresh.
  const int before = view.controller()->repositoryStatus()->changedFilesCount;
  local->setConfirmation([](const QString&, const QString&, const QString&) { return true; });
  LaunchRecorder launches;
  QSignalSpy reloaded(local, &StageFileViewController::reloaded);
  local->discard({*untracked});
  ASSERT_TRUE(reloaded.wait(10000));
  EXPECT_EQ(view.controller()->repositoryStatus()->changedFilesCount, before - 1);
  // Read once, by the repository, for the page and the sidebar alike.
  EXPECT_EQ(launches.count(QStringLiteral("status")), 1) << launches.subcommands().join(' ').toStdString();
  EXPECT_EQ(view.sidebar()->localChangesItem()->text(1), QString::number(before - 1));
  EXPECT_FALSE(QFile::exists(repo.path() + QStringLiteral("/new file é.txt")));
}

TEST(JelvDocument, AFolderThatIsNoRepositoryReportsAnError) {
  QTemporaryDir dir;
  JelvDocument view(GitModule{dir.path(), dir.path() + QStringLiteral("/.git"), std::nullopt}, std::make_shared<JobQueue>());
  QSignalSpy failed(&view, &JelvDocument::loadFailed);
  ASSERT_TRUE(failed.wait(20000));
  EXPECT_FALSE(failed.at(0).at(0).toString().isEmpty());
}

TEST(JelvDocument, ImagesBinariesAndLargeDiffsGetTheirOwnPanes) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("readme.txt"), "hello\n", QStringLiteral("Initial"));
  QImage image(40, 30, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  repo.commitFile(QStringLiteral("logo.png"), png, QStringLiteral("Add logo"));
  QByteArray big;
  for (int i = 0; i < 60000; ++i) big += "line " + QByteArray::number(i) + " of a long generated file\n";
  repo.commitFile(QStringLiteral("big.txt"), big, QStringLiteral("Add big file"));

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  // HEAD adds a text file too large to render at once: the pane offers to load it.
  FileDiffView* pane = view.diffPane();
  EXPECT_TRUE(QTest::qWaitFor([&] { return pane->isOfferingLargeDiff(); }, 10000)) << pane->message().toStdString();
  EXPECT_EQ(pane->message(), QStringLiteral("Large diffs are not rendered by default"));

  ASSERT_TRUE(view.commitList()->selectSha(*Sha::fromHex(repo.git({QStringLiteral("rev-parse"), QStringLiteral("HEAD~1")}).trimmed())));
  EXPECT_TRUE(QTest::qWaitFor([&] { return pane->isShowingImages(); }, 10000));
  EXPECT_EQ(pane->oldImageText(), QStringLiteral("Created"));
  EXPECT_TRUE(pane->hasNewImage());

  // The local changes page resolves changes the same way: a deleted picture, and a large
  // text that shows after "Load Diff".
  repo.removeFile(QStringLiteral("logo.png"));
  repo.writeFile(QStringLiteral("big.txt"), big + big);
  view.showLocalChanges();
  StageFileViewController* local = view.localChangesView();
  QSignalSpy reloaded(local, &StageFileViewController::reloaded);
  local->reload();
  ASSERT_TRUE(reloaded.wait(10000));
  ASSERT_EQ(local->unstagedList()->files().size(), 2u);
  FileListViewController* unstaged = local->unstagedList();
  FileDiffView* localPane = local->diffPane();
  ASSERT_TRUE(unstaged->selectFile(QStringLiteral("logo.png")));
  EXPECT_TRUE(QTest::qWaitFor([&] { return localPane->isShowingImages(); }, 10000));
  EXPECT_EQ(localPane->oldImageText(), QString());
  EXPECT_FALSE(localPane->hasNewImage());
  ASSERT_TRUE(unstaged->selectFile(QStringLiteral("big.txt")));
  ASSERT_TRUE(QTest::qWaitFor([&] { return localPane->isOfferingLargeDiff(); }, 10000)) << localPane->message().toStdString();
  localPane->loadLargeButton()->click();
  EXPECT_TRUE(QTest::qWaitFor([&] { return localPane->isShowingText(); }, 20000));
  EXPECT_GT(local->diffView()->document()->blockCount(), 60000);
}

TEST(JelvDocument, RefreshShowsACommitFromOutsideAndActivationReadsTheStatus) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "one\n", QStringLiteral("Initial"));
  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  ASSERT_EQ(view.commitList()->commitModel()->rowCount(), 1);

  repo.commitFile(QStringLiteral("b.txt"), "two\n", QStringLiteral("From the terminal"));
  view.refresh();
  ASSERT_TRUE(waitFor(view, &JelvDocument::snapshotLoaded));
  EXPECT_EQ(view.commitList()->commitModel()->rowCount(), 2);
  EXPECT_EQ(view.commitList()->commitModel()->revision(0)->message(), QStringLiteral("From the terminal"));

  // Coming back from another program reads the working tree again.
  repo.writeFile(QStringLiteral("a.txt"), "edited elsewhere\n");
  QEvent activate(QEvent::ApplicationActivate);
  QCoreApplication::sendEvent(qApp, &activate);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.sidebar()->localChangesItem()->text(1) == QStringLiteral("1"); }, 20000))
      << view.sidebar()->localChangesItem()->text(1).toStdString();
  const ChangedFileList files = view.localChangesView()->unstagedList()->files();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0]->path, QStringLiteral("a.txt"));
}

TEST(JelvDocument, ACommitFromThePageReachesTheHistoryAndLineWorkRereadsOnlyItsPaths) {
  TempRepository repo;
  buildHistory(repo);
  repo.writeFile(QStringLiteral("a.txt"), "changed\n");
  repo.writeFile(QStringLiteral("b.txt"), "new\n");
  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  view.showLocalChanges();
  StageFileViewController* local = view.localChangesView();
  const int rows = view.commitList()->commitModel()->rowCount();

  // What a line operation leaves behind: only its paths are read, into the repository's snapshot.
  // It runs as an operation of the tab, whose changes the watcher leaves to it.
  const GitModule module = repo.module();
  view.jobQueue()->schedule(Job::make(QStringLiteral("Stage"), Job::Show::everywhere(), Job::ProgressType::infinite, [module](JobProgress& progress) {
    runGitCommand(module, {QStringLiteral("add"), QStringLiteral("b.txt")}, &progress);
  }));
  ASSERT_TRUE(QTest::qWaitFor([&] { return view.jobQueue()->activeJobsCount() == 0; }, 10000));
  LaunchRecorder launches;
  QSignalSpy reloaded(local, &StageFileViewController::reloaded);
  local->refreshPaths({QStringLiteral("b.txt")});
  ASSERT_TRUE(reloaded.wait(10000));
  // One status read, and it is the one limited to the path.
  EXPECT_EQ(launches.count(QStringLiteral("status")), 1) << launches.subcommands().join(' ').toStdString();
  EXPECT_EQ(launches.countEndingWith(GetPathsStatusGitCommand::arguments({QStringLiteral("b.txt")}, false, false)), 1);
  ASSERT_EQ(local->stagedList()->files().size(), 1u);
  EXPECT_EQ(local->stagedList()->files()[0]->path, QStringLiteral("b.txt"));
  const ChangedFileList known = view.controller()->repositoryStatus()->changedFiles;
  EXPECT_TRUE(std::any_of(known.begin(), known.end(), [](const ChangedFilePtr& f) { return f->path == QStringLiteral("b.txt") && f->staged; }));

  local->commitBox()->subjectField()->setText(QStringLiteral("Add b"));
  local->commitBox()->commit();
  // The history and the lists come in two hand-overs of one refresh.
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.commitList()->commitModel()->rowCount() == rows + 1 && local->stagedList()->files().empty(); },
                              20000));
  EXPECT_EQ(view.commitList()->commitModel()->revision(0)->message(), QStringLiteral("Add b"));
  ASSERT_EQ(local->unstagedList()->files().size(), 1u);
  EXPECT_EQ(local->unstagedList()->files()[0]->path, QStringLiteral("a.txt"));
}
