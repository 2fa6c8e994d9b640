// A repository's view as its tab shows it: the history, the details and the local changes
// it reads, what it follows (preferences, filters, refreshes) and what it selects.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>
#include <algorithm>

#include "Controllers/CommitList/CommitListDisplayController.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controllers/Repository/NotificationBar.h"
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
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "core/Refresh/LaunchRecorder.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {

bool waitFor(JelvDocument& view, void (JelvDocument::*signal)()) {
  QSignalSpy spy(&view, signal);
  return spy.wait(20000);
}

// Shows the view at that size and waits for its first snapshot.
bool showLoaded(JelvDocument& view, QSize size = {1200, 800}) {
  view.resize(size);
  QSignalSpy loaded(&view, &JelvDocument::snapshotLoaded);
  view.show();
  return loaded.wait(20000) || !loaded.isEmpty();
}

// A history with a side branch merged back, a tag, and a conflicting merge under way.
void buildHistory(TempRepository& repo) {
  repo.commitFile("a.txt", "one\n", "Initial");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("b.txt", "topic\n", "Topic work");
  repo.git({"checkout", "-q", "main"});
  repo.commitFile("a.txt", "one\ntwo\n", "Main work");
  repo.git({"merge", "-q", "--no-ff", "topic", "-m", "Merge topic"});
  repo.git({"tag", "v1.0"});
}

QStringList paths(const ChangedFileList& files) {
  QStringList list;
  for (const auto& file : files) list << file->path;
  list.sort();
  return list;
}

QStringList subjects(const CommitListView& list) {
  QStringList result;
  for (int row = 0; row < list.commitModel()->rowCount(); ++row) result << list.commitModel()->revision(row)->message();
  return result;
}

}  // namespace

TEST(JelvDocument, ShowsHistoryWithLabelsAndTheStatusLine) {
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
  TempRepository repo;
  buildHistory(repo);
  // The topic's commit is reached only through the merge's second parent.
  const QString topic = repo.git({"rev-parse", "topic"}).trimmed();
  repo.git({"branch", "-q", "-D", "topic"});
  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));

  EXPECT_EQ(view.localChangesView()->diffPane()->message(), QStringLiteral("No local changes"));
  auto* model = view.commitList()->commitModel();
  EXPECT_EQ(model->rowCount(), 4);
  EXPECT_EQ(model->revision(0)->message(), QStringLiteral("Merge topic"));
  QStringList labels;
  for (const auto& ref : model->decoration(0).references) labels << ref.reference->name;
  labels.sort();
  EXPECT_EQ(labels, (QStringList{"main", "v1.0"}));
  // The finished refresh stays on the status line for two seconds, then the repository line.
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.statusBar()->text() == QStringLiteral("repo: main"); }, 5000))
      << view.statusBar()->text().toStdString();
  EXPECT_TRUE(view.notificationBar()->isHidden());

  // First-parent mode hides the topic's commit, and the diff shown for it goes with it.
  ASSERT_TRUE(view.commitList()->selectSha(*Sha::fromHex(topic)));
  ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  EXPECT_TRUE(view.diffPane()->message().isEmpty());
  view.displayController()->setShowFirstParent(true);
  EXPECT_FALSE(view.commitList()->currentRevision());
  EXPECT_TRUE(view.revisionFiles()->files().empty());
  EXPECT_EQ(view.diffPane()->message(), QStringLiteral("Select a commit to see its changes."));
  view.displayController()->setShowFirstParent(false);
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);

  // Coming back from another program reads the working tree again.
  repo.writeFile("a.txt", "edited elsewhere\n");
  QEvent activate(QEvent::ApplicationActivate);
  QCoreApplication::sendEvent(qApp, &activate);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.sidebar()->localChangesItem()->text(1) == QStringLiteral("1"); }, 20000))
      << view.sidebar()->localChangesItem()->text(1).toStdString();
  const ChangedFileList files = view.localChangesView()->unstagedList()->files();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0]->path, QStringLiteral("a.txt"));
}

TEST(JelvDocument, LocalChangesAndAMergeInProgress) {
  TempRepository repo;
  buildHistory(repo);
  repo.git({"checkout", "-q", "-b", "other", "HEAD~2"});
  repo.commitFile("a.txt", "one\nother\n", "Other change");
  repo.git({"checkout", "-q", "main"});
  repo.git({"merge", "other"}, true);  // conflicts
  repo.writeFile("new file é.txt", "fresh\n");

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
  repo.commitFile("readme.txt", "hello\n", "Initial");
  QImage image(40, 30, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  repo.commitFile("logo.png", png, "Add logo");
  QByteArray big;
  for (int i = 0; i < 60000; ++i) big += "line " + QByteArray::number(i) + " of a long generated file\n";
  repo.commitFile("big.txt", big, "Add big file");

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  // HEAD adds a text file too large to render at once: the pane offers to load it.
  FileDiffView* pane = view.diffPane();
  EXPECT_TRUE(QTest::qWaitFor([&] { return pane->isOfferingLargeDiff(); }, 10000)) << pane->message().toStdString();
  EXPECT_EQ(pane->message(), QStringLiteral("Large diffs are not rendered by default"));

  ASSERT_TRUE(view.commitList()->selectSha(*Sha::fromHex(repo.git({"rev-parse", "HEAD~1"}).trimmed())));
  EXPECT_TRUE(QTest::qWaitFor([&] { return pane->isShowingImages(); }, 10000));
  EXPECT_EQ(pane->oldImageText(), QStringLiteral("Created"));
  EXPECT_TRUE(pane->hasNewImage());

  // On the local changes page too, a large text shows after "Load Diff".
  repo.writeFile("big.txt", big + big);
  view.showLocalChanges();
  StageFileViewController* local = view.localChangesView();
  QSignalSpy reloaded(local, &StageFileViewController::reloaded);
  local->reload();
  ASSERT_TRUE(reloaded.wait(10000));
  FileDiffView* localPane = local->diffPane();
  ASSERT_TRUE(local->unstagedList()->selectFile(QStringLiteral("big.txt")));
  ASSERT_TRUE(QTest::qWaitFor([&] { return localPane->isOfferingLargeDiff(); }, 10000)) << localPane->message().toStdString();
  localPane->loadLargeButton()->click();
  EXPECT_TRUE(QTest::qWaitFor([&] { return localPane->isShowingText(); }, 20000));
  EXPECT_GT(local->diffView()->document()->blockCount(), 60000);
}

TEST(JelvDocument, ACommitFromThePageReachesTheHistoryAndLineWorkRereadsOnlyItsPaths) {
  TempRepository repo;
  buildHistory(repo);
  repo.writeFile("a.txt", "changed\n");
  repo.writeFile("b.txt", "new\n");
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

TEST(RepositoryViewSelection, OpensOnTheCheckedOutCommitAndComparesTwoCommits) {
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
  TempRepository repo;
  const QString first = repo.commitFile("a.txt", "1\n", "first");
  repo.commitFile("b.txt", "b\n", "second");
  const QString third = repo.commitFile("c.txt", "c\n", "third");
  // A branch far ahead, so that the checked-out commit is not among the first rows.
  QByteArray script = "reset refs/heads/ahead\nfrom " + third.toLatin1() + "\n";
  for (int i = 0; i < 60; ++i) script += "commit refs/heads/ahead\ncommitter C <c@x> " + QByteArray::number(1800000000 + i) + " +0000\ndata 5\nahead\n";
  repo.gitBytes({"fast-import", "--quiet"}, script);

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1200, 760}));
  CommitListView* list = view.commitList();
  ASSERT_TRUE(list->currentRevision());
  EXPECT_EQ(list->currentRevision()->sha().toString(), third);
  QApplication::processEvents();
  const QRect row = list->visualRect(list->currentIndex());
  EXPECT_TRUE(list->viewport()->rect().contains(row)) << row.y();

  // The newest and the oldest of the three: the files of both commits after the first.
  const int older = *list->commitModel()->row(*Sha::fromHex(first));
  QSignalSpy details(&view, &JelvDocument::commitDetailsLoaded);
  list->selectionModel()->select(list->commitModel()->index(older, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  ASSERT_TRUE(QTest::qWaitFor([&] { return paths(view.revisionFiles()->files()) == QStringList{"b.txt", "c.txt"}; }, 10000))
      << paths(view.revisionFiles()->files()).join(' ').toStdString();
  EXPECT_TRUE(view.revisionHeader()->toPlainText().contains(QStringLiteral("Changes between two commits")));
  QSignalSpy diff(&view, &JelvDocument::diffLoaded);
  ASSERT_TRUE(diff.wait(10000));

  // Back to one commit: its own files again.
  list->selectionModel()->select(list->commitModel()->index(older, 0), QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  ASSERT_TRUE(QTest::qWaitFor([&] { return paths(view.revisionFiles()->files()) == QStringList{"c.txt"}; }, 10000));
}

TEST(RepositoryViewFollow, TheShownDiffAndTheHistoryFollowThePreferences) {
  auto& prefs = Preferences::shared();
  TempRepository repo;
  QByteArray text;
  for (int i = 1; i <= 20; ++i) text += "line " + QByteArray::number(i) + "\n";
  repo.commitFile("a.txt", text, "first");
  repo.commitFile("a.txt", text.replace("line 10\n", "line ten\n"), "second");

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  ASSERT_EQ(view.commitList()->commitModel()->rowCount(), 2);
  if (view.diffView()->rows().empty()) {
    ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  }
  const size_t withContext = view.diffView()->rows().size();

  prefs.setValue(QStringLiteral("contextSize"), 0);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffContextSizeChanged);
  ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  EXPECT_LT(view.diffView()->rows().size(), withContext);

  prefs.remove(QStringLiteral("contextSize"));

  // The commit's diff goes side by side on its own choice; the staging diff keeps its own.
  FileDiffView* pane = view.diffPane();
  ASSERT_FALSE(pane->isSideBySide());
  pane->layoutButton()->click();
  EXPECT_EQ(prefs.revisionDiffLayoutMode(), 1);
  EXPECT_EQ(prefs.commitDiffLayoutMode(), 0);
  EXPECT_TRUE(pane->leftView()->isVisibleTo(pane));
  EXPECT_TRUE(pane->leftView()->toPlainText().contains(QStringLiteral("line 10")));
  EXPECT_TRUE(pane->rightView()->toPlainText().contains(QStringLiteral("line ten")));
  EXPECT_FALSE(pane->rightView()->toPlainText().contains(QStringLiteral("line 10\n")));
  screenshot(&view, QStringLiteral("history-side-by-side"));
  // Only read: the keys find no hunk to stage.
  pane->rightView()->goToHunk(1);
  EXPECT_FALSE(pane->rightView()->activeChunk());
  pane->layoutButton()->click();
  EXPECT_EQ(prefs.revisionDiffLayoutMode(), 0);
  EXPECT_TRUE(view.diffView()->isVisibleTo(pane));
  EXPECT_FALSE(view.diffView()->rows().empty());
  prefs.remove(QStringLiteral("revisionDiffLayoutMode"));

  // A lower commit count reads the history again.
  prefs.setValue(QStringLiteral("maxCommitCount"), 1);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::revisionOrderingChanged);
  // One commit, and the row that says the history was cut.
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.commitList()->commitModel()->revisionCount() == 1; }, 20000));
  EXPECT_TRUE(view.commitList()->commitModel()->isCutRow(1));
  prefs.remove(QStringLiteral("maxCommitCount"));
}

TEST(RepositoryViewFollow, AFilteredListStaysFilteredThroughARefresh) {
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
  TempRepository repo;
  repo.commitFile("a.txt", "1\n", "Initial layout");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("t.txt", "t\n", "Topic: parser");
  repo.commitFile("t.txt", "tt\n", "Topic: parser tests");
  repo.git({"checkout", "-q", "-b", "feature", "main"});
  repo.commitFile("f.txt", "f\n", "Feature: settings page");
  repo.git({"checkout", "-q", "main"});
  repo.commitFile("a.txt", "2\n", "Main: release notes");
  repo.git({"tag", "v1.0"});
  repo.commitFile("a.txt", "3\n", "Main: bump version");

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1400, 820}));
  ASSERT_EQ(view.commitList()->commitModel()->rowCount(), 6);
  ASSERT_TRUE(QTest::qWaitFor([&] { return view.revisionHeader()->toPlainText().contains(QStringLiteral("bump version")); }, 20000));

  Q_EMIT view.sidebar()->starRequested(QStringLiteral("refs/heads/topic"), true);
  Q_EMIT view.sidebar()->starRequested(QStringLiteral("refs/heads/feature"), true);
  Q_EMIT view.sidebar()->filterRequested({QStringLiteral("refs/heads/topic"), QStringLiteral("refs/heads/feature")});
  const QStringList filtered = {"Topic: parser tests", "Topic: parser", "Feature: settings page", "Initial layout"};
  const auto sorted = [](QStringList list) {
    list.sort();
    return list;
  };
  EXPECT_EQ(sorted(subjects(*view.commitList())), sorted(filtered));
  // HEAD's commit was selected and is filtered out: its details go with it.
  EXPECT_FALSE(view.commitList()->currentRevision());
  EXPECT_FALSE(view.revisionHeader()->toPlainText().contains(QStringLiteral("bump version")));

  // The saved settings start a refresh of their own; let it end first.
  ASSERT_TRUE(QTest::qWaitFor([&] { return !view.controller()->isRefreshing(); }, 20000));
  EXPECT_EQ(sorted(subjects(*view.commitList())), sorted(filtered));

  // A new commit on main arrives with the next refresh; the filter still holds.
  repo.commitFile("a.txt", "4\n", "Main: more work");
  view.refresh();
  ASSERT_TRUE(waitFor(view, &JelvDocument::snapshotLoaded));
  EXPECT_EQ(sorted(subjects(*view.commitList())), sorted(filtered));
  EXPECT_TRUE(view.sidebar()->content().references.starred.contains(QStringLiteral("refs/heads/topic")));
  if (qEnvironmentVariableIsSet("JELV_SCREENSHOT_DIR")) {
    view.sidebar()->expandAll();
    QSignalSpy diff(&view, &JelvDocument::diffLoaded);
    view.commitList()->selectRow(1);
    diff.wait(10000);
    screenshot(&view, QStringLiteral("commit-list-filtered"));
  }
}

TEST(RepositoryViewFollow, CommitsAheadAndBehindTheUpstreamAreMarkedFromTheRefresh) {
  TempRepository repo;
  repo.commitFile("a.txt", "1\n", "Shared base");
  repo.git({"checkout", "-q", "-b", "theirs"});
  repo.commitFile("b.txt", "1\n", "Their work");
  repo.git({"update-ref", "refs/remotes/origin/main", repo.headSha()});
  repo.git({"checkout", "-q", "main"});
  repo.git({"branch", "-q", "-D", "theirs"});
  repo.commitFile("a.txt", "2\n", "My first");
  repo.commitFile("a.txt", "3\n", "My second");
  repo.git({"config", "remote.origin.url", repo.path()});
  repo.git({"config", "remote.origin.fetch", "+refs/heads/*:refs/remotes/origin/*"});
  repo.git({"config", "branch.main.remote", "origin"});
  repo.git({"config", "branch.main.merge", "refs/heads/main"});

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1200, 500}));
  const CommitListModel& model = *view.commitList()->commitModel();
  QMap<QString, AheadBehindState> states;
  QMap<QString, QString> tips;
  for (int row = 0; row < model.rowCount(); ++row) {
    const QModelIndex index = model.index(row, CommitListModel::GraphColumn);
    states[model.revision(row)->message()] = static_cast<AheadBehindState>(index.data(CommitListModel::AheadBehindRole).toInt());
    tips[model.revision(row)->message()] = index.data(Qt::ToolTipRole).toString();
  }
  EXPECT_EQ(states.value(QStringLiteral("My first")), AheadBehindState::ahead);
  EXPECT_EQ(states.value(QStringLiteral("My second")), AheadBehindState::ahead);
  EXPECT_EQ(states.value(QStringLiteral("Their work")), AheadBehindState::behind);
  EXPECT_EQ(states.value(QStringLiteral("Shared base")), AheadBehindState::none);
  // The lane's tooltip says what the mark means; an unmarked commit's is its subject.
  EXPECT_EQ(tips.value(QStringLiteral("My first")), QStringLiteral("My first\n\nNot yet pushed to the upstream branch"));
  EXPECT_EQ(tips.value(QStringLiteral("Shared base")), QStringLiteral("Shared base"));
  if (qEnvironmentVariableIsSet("JELV_SCREENSHOT_DIR")) {
    view.sidebar()->expandAll();
    QApplication::processEvents();
    screenshot(&view, QStringLiteral("commit-list-ahead-behind"));
  }
}
