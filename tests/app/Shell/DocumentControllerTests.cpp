#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QThread>
#include <QToolBar>

#include "Commands/CommandTable.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "UI/JelvDocument.h"
#include "Controls/ChangedFilesView.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Models/RepositoryValidation.h"
#include "Models/WindowSession.h"
#include "Services/ApplicationStartup.h"
#include "Services/PreferencesNotifier.h"
#include "ShellTestSupport.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"

namespace {

// A job that runs until it is canceled (or ten seconds pass).
std::shared_ptr<Job> scheduleWaitingJob(JobQueue& queue) {
  auto job = Job::make(QStringLiteral("Wait"), Job::Show::none(), Job::ProgressType::infinite, [](JobProgress& progress) {
    for (int i = 0; i < 1000 && !progress.isCanceled(); ++i) QThread::msleep(10);
  });
  queue.schedule(job);
  return job;
}

QStringList tabTitles(const JelvMainWindow& window) {
  QStringList titles;
  for (int i = 0; i < window.tabCount(); ++i) titles << window.tabWidget()->tabText(i);
  return titles;
}

}  // namespace

using DocumentController = ShellTest;

TEST_F(DocumentController, OpensRepositoriesInTabsAndBringsAnOpenOneToTheFront) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.commitFile(QStringLiteral("src/a.txt"), "a\n", QStringLiteral("Initial"));
  TempRepository beta(true, QStringLiteral("beta"));
  JelvDocumentController documents(registry(), preferences());

  documents.openRepository(alpha.path());
  documents.openRepository(QStringLiteral("file://") + beta.path());
  ASSERT_TRUE(settle(documents));
  ASSERT_EQ(documents.windows().size(), 1);
  JelvMainWindow* window = documents.windows().first();
  EXPECT_EQ(tabTitles(*window), (QStringList{"alpha", "beta"}));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("beta — Jelv"));
  EXPECT_EQ(window->tab(0)->kind(), JelvWindowController::Kind::repository);
  EXPECT_TRUE(registry().repositoryItemExists(alpha.path()));
  EXPECT_TRUE(registry().repositoryItemExists(beta.path()));

  // A sub-folder of alpha, or alpha again, fronts alpha's tab instead of a new one.
  documents.openRepository(alpha.path() + QStringLiteral("/src"));
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), window->tab(0));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("alpha — Jelv"));
  window->tabWidget()->setCurrentIndex(1);
  documents.openRepository(alpha.path());
  EXPECT_EQ(window->currentTab(), window->tab(0));

  // A rename in the registry reaches the tab and the window title.
  EXPECT_TRUE(window->tabWidget()->tabIcon(0).isNull());
  for (const auto& record : registry().getRepositories()) {
    if (record->repositoryPath != alpha.path()) continue;
    registry().renameRepository(record->id, QStringLiteral("Alpha Renamed"));
    registry().setRepositoryColorTag(record->id, 2);
  }
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::repositoryInfoChanged);
  EXPECT_EQ(window->tabWidget()->tabText(0), QStringLiteral("Alpha Renamed"));
  EXPECT_EQ(window->tab(0)->colorTag(), 2);
  EXPECT_FALSE(window->tabWidget()->tabIcon(0).isNull());
  EXPECT_TRUE(window->tabWidget()->tabIcon(1).isNull());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Alpha Renamed — Jelv"));
}

TEST_F(DocumentController, ARefusedFolderIsReportedAndLeavesNoTabBehind) {
  const QString plain = folder(QStringLiteral("not-a-repository"));
  JelvDocumentController documents(registry(), preferences());
  QSignalSpy failed(&documents, &JelvDocumentController::openFailed);

  documents.openRepository(plain);
  ASSERT_TRUE(settle(documents));
  ASSERT_EQ(failed.size(), 1);
  const QString expected = RepositoryValidation::openFailureText(RepositoryRefusal::notARepository, plain);
  EXPECT_EQ(failed.at(0).at(0).toString(), expected);
  // The window that was opened for it shows the repository manager rather than nothing.
  ASSERT_EQ(documents.windows().size(), 1);
  JelvMainWindow* window = documents.windows().first();
  ASSERT_EQ(window->tabCount(), 1);
  EXPECT_EQ(window->tab(0)->kind(), JelvWindowController::Kind::repositoryManager);
  auto* alert = window->findChild<QMessageBox*>();
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->text(), expected);
  EXPECT_FALSE(registry().repositoryItemExists(plain));
}

TEST_F(DocumentController, ClosingATabCancelsItsJobsOnly) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  TempRepository beta(true, QStringLiteral("beta"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path(), beta.path()});
  ASSERT_TRUE(window);
  ASSERT_EQ(window->tabCount(), 2);

  auto closing = scheduleWaitingJob(*window->tab(1)->jobQueue());
  auto staying = scheduleWaitingJob(*window->tab(0)->jobQueue());
  window->action(QStringLiteral("closeTabAction"))->trigger();  // beta is in front
  EXPECT_TRUE(QTest::qWaitFor([&] { return closing->progress().isCanceled(); }, 5000));
  EXPECT_FALSE(staying->progress().isCanceled());
  EXPECT_EQ(tabTitles(*window), QStringList{"alpha"});
  staying->progress().cancel();

  // Closing the last tab closes the window, and with it the last window.
  QSignalSpy last(&documents, &JelvDocumentController::lastWindowClosed);
  window->action(QStringLiteral("closeTabAction"))->trigger();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(last.size(), 1);
  EXPECT_TRUE(documents.windows().isEmpty());
}

TEST_F(DocumentController, KeyboardWalksTheTabsAndTheTitleFollows) {
  JelvDocumentController documents(registry(), preferences());
  TempRepository alpha(true, QStringLiteral("alpha"));
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));

  QTest::keyClick(window, Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(tabTitles(*window), (QStringList{"alpha", "Repositories"}));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Repositories — Jelv"));
  QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("alpha — Jelv"));
  QTest::keyClick(window, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Repositories — Jelv"));
  QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(tabTitles(*window), QStringList{"alpha"});
  EXPECT_EQ(window->windowTitle(), QStringLiteral("alpha — Jelv"));
}

TEST_F(DocumentController, TheRepositoryToolbarOffersWhatTheTabCanDo) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("Initial"));
  alpha.writeFile(QStringLiteral("a.txt"), "changed\n");
  JelvDocumentController documents(registry(), preferences());
  QSignalSpy opened(&documents, &JelvDocumentController::repositoryOpened);
  documents.openRepository(alpha.path());
  ASSERT_TRUE(opened.wait(20000));
  JelvWindowController* tab = documents.windows().first()->tab(0);
  JelvDocument* view = tab->document();
  ASSERT_TRUE(view);
  QSignalSpy loaded(view, &JelvDocument::snapshotLoaded);
  ASSERT_TRUE(loaded.wait(20000));

  ASSERT_TRUE(tab->toolbar());
  QStringList visible;
  for (QAction* action : tab->toolbar()->actions()) {
    if (action->isVisible() && !action->isSeparator()) visible << action->objectName();
  }
  // The tab's own actions, then every command the table puts on the toolbar, in its order.
  QStringList expected{"refreshAction", "localChangesAction", "historyAction", "showInFolderAction", "activityAction"};
  for (const CommandDescriptor& descriptor : CommandTable::all()) {
    if (descriptor.places & CommandDescriptor::toolbar) expected << descriptor.identifier + QStringLiteral("Action");
  }
  EXPECT_EQ(visible, expected);
  EXPECT_GT(expected.size(), 5);

  StageFileViewController* local = view->localChangesView();
  const auto listed = [local] { return local->unstagedList()->files().size() + local->stagedList()->files().size(); };
  tab->findChild<QAction*>(QStringLiteral("localChangesAction"))->trigger();
  EXPECT_TRUE(local->isVisible());
  ASSERT_EQ(listed(), 1u);
  tab->findChild<QAction*>(QStringLiteral("historyAction"))->trigger();
  EXPECT_FALSE(local->isVisible());

  // Refresh reads the repository again: a new file shows up among the local changes.
  alpha.writeFile(QStringLiteral("b.txt"), "new\n");
  tab->findChild<QAction*>(QStringLiteral("refreshAction"))->trigger();
  ASSERT_TRUE(loaded.wait(20000));
  EXPECT_EQ(listed(), 2u);
}

TEST_F(DocumentController, TheManagerTabOpensWhatItsViewAsksFor) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  registry().addRepository(alpha.path());
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = documents.newRepositoryManagerAsWindow();
  QWidget* manager = window->tab(0)->repositoryManagerController();
  ASSERT_TRUE(manager);

  // Whatever view the tab hosts, its request reaches the document controller by name.
  ASSERT_TRUE(QMetaObject::invokeMethod(manager, "openRepositoryRequested", Q_ARG(QString, alpha.path())));
  ASSERT_TRUE(settle(documents));
  ASSERT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->tab(1)->kind(), JelvWindowController::Kind::repository);
  EXPECT_EQ(window->currentTab(), window->tab(1));
  EXPECT_EQ(window->tab(0)->kind(), JelvWindowController::Kind::repositoryManager);
}

TEST_F(DocumentController, TheRepositoryMenuFollowsTheTabInFront) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  auto* menu = window->findChild<QMenu*>(QStringLiteral("repositoryMenu"));
  ASSERT_TRUE(menu);
  auto enabledNames = [menu] {
    Q_EMIT menu->aboutToShow();
    QStringList names;
    for (QAction* action : menu->actions()) {
      if (!action->isSeparator() && action->isEnabled()) names << action->objectName();
    }
    return names;
  };
  EXPECT_EQ(enabledNames(), (QStringList{"refreshAction", "localChangesAction", "historyAction", "showInFolderAction",
                                         "activityAction"}));
  documents.newRepositoryManagerAsTab(window);
  EXPECT_TRUE(enabledNames().isEmpty());
  window->selectPreviousTab();
  EXPECT_EQ(enabledNames().size(), 5);
}

TEST_F(DocumentController, ATabMovesToANewWindowStillRunningAndOtherTabsClose) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  TempRepository beta(true, QStringLiteral("beta"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* first = openAll(documents, {alpha.path(), beta.path()});
  ASSERT_TRUE(first);
  JelvWindowController* moved = first->tab(0);
  JelvDocument* view = moved->document();
  auto job = scheduleWaitingJob(*moved->jobQueue());

  JelvMainWindow* second = documents.moveTabToNewWindow(moved);
  ASSERT_NE(second, first);
  EXPECT_EQ(tabTitles(*first), QStringList{"beta"});
  ASSERT_EQ(second->tab(0), moved);
  EXPECT_EQ(moved->document(), view);
  EXPECT_FALSE(job->progress().isCanceled());
  EXPECT_EQ(second->windowTitle(), QStringLiteral("alpha — Jelv"));
  // Requests of the moved tab now reach its new window.
  Q_EMIT moved->openDocumentRequested();
  EXPECT_TRUE(second->findChild<QFileDialog*>(QStringLiteral("openPanel")));
  EXPECT_FALSE(first->findChild<QFileDialog*>(QStringLiteral("openPanel")));
  // The last tab of a window does not move: there would be an empty window left.
  EXPECT_EQ(documents.moveTabToNewWindow(moved), second);
  EXPECT_EQ(documents.windows().size(), 2);

  documents.newRepositoryManagerAsTab(second);
  second->closeOtherTabs(second->tab(1));
  EXPECT_TRUE(QTest::qWaitFor([&] { return job->progress().isCanceled(); }, 5000));
  ASSERT_EQ(second->tabCount(), 1);
  EXPECT_EQ(second->tab(0)->kind(), JelvWindowController::Kind::repositoryManager);
  EXPECT_EQ(WindowSession::decode(preferences().string(WindowSession::preferenceKey()).toUtf8()).size(), 2u);
}

TEST_F(DocumentController, AFolderDroppedOnAWindowOpensThere) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = documents.newRepositoryManagerAsWindow();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(alpha.path()), QUrl::fromLocalFile(alpha.path() + QStringLiteral("/.git/HEAD"))});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QCoreApplication::sendEvent(window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(window, &drop);
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(tabTitles(*window), (QStringList{"Repositories", "alpha"}));

  QMimeData fileOnly;
  fileOnly.setUrls({QUrl::fromLocalFile(alpha.path() + QStringLiteral("/.git/HEAD"))});
  QDragEnterEvent refused(QPoint(10, 10), Qt::CopyAction, &fileOnly, Qt::LeftButton, Qt::NoModifier);
  refused.ignore();
  QCoreApplication::sendEvent(window, &refused);
  EXPECT_FALSE(refused.isAccepted());
}

TEST_F(DocumentController, AResizedWindowIsSavedOnceItRests) {
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = documents.newRepositoryManagerAsWindow();
  QTest::qWait(50);
  window->resize(700, 500);
  auto savedSize = [this] {
    const auto windows = ApplicationStartup::savedWindows(preferences());
    if (windows.empty()) return QSize();
    QWidget probe;
    probe.restoreGeometry(windows.front().geometry);
    return probe.size();
  };
  EXPECT_TRUE(QTest::qWaitFor([&] { return savedSize() == QSize(700, 500); }, 5000)) << savedSize().width();
}

TEST_F(DocumentController, WindowsClosedByQuitAreDeletedWithTheControllerAndTheirJobsEnd) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  auto documents = std::make_unique<JelvDocumentController>(registry(), preferences());
  documents->openRepository(alpha.path());
  ASSERT_TRUE(settle(*documents));
  QPointer<JelvMainWindow> window = documents->windows().first();
  std::weak_ptr<JobQueue> queue = window->tab(0)->jobQueue();
  auto job = scheduleWaitingJob(*queue.lock());

  // After the event loop has ended nothing runs deferred deletions; the controller must.
  documents->quit();
  EXPECT_TRUE(job->progress().isCanceled());
  documents.reset();
  EXPECT_TRUE(window.isNull());
  EXPECT_TRUE(queue.expired());
  EXPECT_EQ(job->status(), Job::Status::finished);
}

TEST_F(DocumentController, ProfilingDataOfEveryRepositoryTabIsExportedAsATrace) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("Initial"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  auto job = Job::make(QStringLiteral("Measured work"), Job::Show{3}, Job::ProgressType::infinite, [](JobProgress&) {});
  window->tab(0)->jobQueue()->schedule(job);
  ASSERT_TRUE(QTest::qWaitFor([&] { return job->status() == Job::Status::finished; }, 10000));

  QTemporaryDir temporary;
  const QByteArray savedTemp = qgetenv("TMPDIR");
  qputenv("TMPDIR", temporary.path().toLocal8Bit());
  window->action(QStringLiteral("exportProfilingDataAction"))->trigger();
  qputenv("TMPDIR", savedTemp);
  const QStringList traces = QDir(temporary.path()).entryList({QStringLiteral("jelv-*.trace")}, QDir::Files);
  ASSERT_EQ(traces.size(), 1);
  QFile trace(QDir(temporary.path()).filePath(traces.first()));
  ASSERT_TRUE(trace.open(QIODevice::ReadOnly));
  const QByteArray text = trace.readAll();
  EXPECT_TRUE(text.contains("\"events\""));
  EXPECT_TRUE(text.contains("Measured work"));
}
