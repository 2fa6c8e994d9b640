// The shell: windows and their tabs, what opens where, the menus and toolbar that follow
// the tab in front, the start of the program and what it brings back.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QToolBar>
#include <QToolButton>
#include <atomic>
#include <memory>

#include "Commands/CommandTable.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "UI/JelvDocument.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Jobs/Job.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "Jobs/ReleasedQueues.h"
#include "Repository/RepositoryController.h"
#include "Models/AppSettings.h"
#include "Models/GitModuleSettings.h"
#include "Models/RepositoryReadme.h"
#include "Models/RepositoryValidation.h"
#include "Models/WindowSession.h"
#include "Services/ApplicationStartup.h"
#include "Services/PreferencesNotifier.h"
#include "UI/AboutWindow.h"
#include "UI/AppDelegate.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "UI/WelcomeWindowController.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"
#include "ShellFixture.h"

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

struct TabView {
  JelvWindowController::Kind kind;
  QString path;
  bool operator==(const TabView&) const = default;
};

std::vector<TabView> tabsOf(const JelvMainWindow& window) {
  std::vector<TabView> tabs;
  for (int i = 0; i < window.tabCount(); ++i) tabs.push_back({window.tab(i)->kind(), window.tab(i)->repositoryPath()});
  return tabs;
}

constexpr auto repositoryTab = JelvWindowController::Kind::repository;
constexpr auto managerTab = JelvWindowController::Kind::repositoryManager;

QMenu* viewMenu(JelvMainWindow& window) {
  for (QAction* action : window.menuBar()->actions()) {
    if (action->menu() && action->text() == QStringLiteral("&View")) return action->menu();
  }
  return nullptr;
}

QAction* opened(QMenu* menu, const QString& text) {
  Q_EMIT menu->aboutToShow();
  QAction* found = nullptr;
  for (QAction* action : menu->actions()) {
    if (action->text() == text) {
      EXPECT_FALSE(found) << "twice: " << text.toStdString();
      found = action;
    }
  }
  return found;
}

}  // namespace

using DocumentController = ShellTest;
using StartupFlow = ShellTest;

TEST_F(DocumentController, OpensRepositoriesInTabsAndBringsAnOpenOneToTheFront) {
  alpha().commitFile("src/a.txt", "a\n", "Initial");
  JelvDocumentController documents(registry(), preferences());

  documents.openRepository(alpha().path());
  documents.openRepository(QStringLiteral("file://") + beta().path());
  ASSERT_TRUE(settle(documents));
  ASSERT_EQ(documents.windows().size(), 1);
  JelvMainWindow* window = documents.windows().first();
  EXPECT_EQ(tabTitles(*window), (QStringList{"alpha", "beta"}));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("beta — Jelv"));

  // A sub-folder of alpha, or alpha again, fronts alpha's tab instead of a new one.
  documents.openRepository(alpha().path() + QStringLiteral("/src"));
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), window->tab(0));
  window->tabWidget()->setCurrentIndex(1);
  documents.openRepository(alpha().path());
  EXPECT_EQ(window->currentTab(), window->tab(0));

  // A rename in the registry reaches the tab and the window title.
  EXPECT_TRUE(window->tabWidget()->tabIcon(0).isNull());
  for (const auto& record : registry().getRepositories()) {
    if (record->repositoryPath != alpha().path()) continue;
    registry().renameRepository(record->id, QStringLiteral("Alpha Renamed"));
    registry().setRepositoryColorTag(record->id, 2);
  }
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::repositoryInfoChanged);
  EXPECT_EQ(window->tabWidget()->tabText(0), QStringLiteral("Alpha Renamed"));
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

TEST_F(DocumentController, KeyboardWalksTheTabsAndTheTitleFollows) {
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha().path()});
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

// The toolbar offers what the tab can do and marks the page on screen; the tab's jobs go
// into the profiling trace.
TEST_F(DocumentController, TheRepositoryToolbarOffersWhatTheTabCanDoAndMarksThePageOnScreen) {
  alpha().commitFile("a.txt", "a\n", "Initial");
  alpha().writeFile("a.txt", "changed\n");
  JelvDocumentController documents(registry(), preferences());
  QSignalSpy opened(&documents, &JelvDocumentController::repositoryOpened);
  documents.openRepository(alpha().path());
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
  QStringList expected{"refreshAction", "localChangesAction", "historyAction", "searchAction", "showInFolderAction", "activityAction"};
  for (const CommandDescriptor& descriptor : CommandTable::all()) {
    if (descriptor.places & CommandDescriptor::toolbar) expected << descriptor.identifier + QStringLiteral("Action");
  }
  EXPECT_EQ(visible, expected);
  EXPECT_GT(expected.size(), 6);
  // Each of them is in the Repository menu too.
  auto* menu = documents.windows().first()->findChild<QMenu*>(QStringLiteral("repositoryMenu"));
  Q_EMIT menu->aboutToShow();
  QStringList inMenu;
  for (QAction* action : menu->actions()) inMenu << action->objectName();
  for (const QString& name : expected) EXPECT_TRUE(inMenu.contains(name)) << name.toStdString();

  StageFileViewController* local = view->localChangesView();
  const auto listed = [local] { return local->unstagedList()->files().size() + local->stagedList()->files().size(); };
  ASSERT_EQ(listed(), 1u);

  // Refresh reads the repository again: a new file shows up among the local changes.
  alpha().writeFile("b.txt", "new\n");
  tab->findChild<QAction*>(QStringLiteral("refreshAction"))->trigger();
  ASSERT_TRUE(loaded.wait(20000));
  EXPECT_EQ(listed(), 2u);

  // The toolbar marks the page on screen, however it was chosen.
  auto* changes = tab->findChild<QAction*>(QStringLiteral("localChangesAction"));
  auto* history = tab->findChild<QAction*>(QStringLiteral("historyAction"));
  ASSERT_TRUE(changes && history);
  RepositorySidebar* sidebar = view->sidebar();
  ASSERT_TRUE(QTest::qWaitFor([&] { return sidebar->localChangesItem() && sidebar->allCommitsItem(); }, 10000));
  sidebar->setCurrentItem(sidebar->localChangesItem());
  EXPECT_TRUE(changes->isChecked());
  sidebar->setCurrentItem(sidebar->allCommitsItem());
  EXPECT_TRUE(history->isChecked());
  EXPECT_FALSE(changes->isChecked());

  // Its keys work anywhere in the tab and turn the page.
  JelvMainWindow* window = documents.windows().first();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  sidebar->setFocus();
  QTest::keyClick(sidebar, Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(sidebar->currentItem(), sidebar->localChangesItem());
  EXPECT_TRUE(local->isVisible());
  QTest::keyClick(sidebar, Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(sidebar->currentItem(), sidebar->allCommitsItem());
  EXPECT_FALSE(local->isVisible());

  // The profiling data of the tab's jobs is exported as a trace.
  auto job = Job::make(QStringLiteral("Measured work"), Job::Show{3}, Job::ProgressType::infinite, [](JobProgress&) {});
  tab->jobQueue()->schedule(job);
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
  EXPECT_TRUE(trace.readAll().contains("Measured work"));
}

TEST_F(DocumentController, ATabMovesToANewWindowStillRunningAndOtherTabsClose) {
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* first = openAll(documents, {alpha().path(), beta().path()});
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

// A repositories window opens what its manager view asks for (its request reaches the
// document controller by name, whatever view the tab hosts) and a folder dropped on it,
// in tabs of its own; a file alone is not taken.
TEST_F(DocumentController, TheManagerWindowOpensWhatItsViewAsksForAndWhatIsDropped) {
  registry().addRepository(alpha().path());
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = documents.newRepositoryManagerAsWindow();
  QWidget* manager = window->tab(0)->repositoryManagerController();
  ASSERT_TRUE(manager);
  ASSERT_TRUE(QMetaObject::invokeMethod(manager, "openRepositoryRequested", Q_ARG(QString, alpha().path())));
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(tabTitles(*window), (QStringList{"Repositories", "alpha"}));
  EXPECT_EQ(window->currentTab(), window->tab(1));

  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(beta().path()), QUrl::fromLocalFile(beta().path() + QStringLiteral("/.git/HEAD"))});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QCoreApplication::sendEvent(window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(window, &drop);
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(tabTitles(*window), (QStringList{"Repositories", "alpha", "beta"}));

  QMimeData fileOnly;
  fileOnly.setUrls({QUrl::fromLocalFile(beta().path() + QStringLiteral("/.git/HEAD"))});
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
  auto documents = std::make_unique<JelvDocumentController>(registry(), preferences());
  documents->openRepository(alpha().path());
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

TEST_F(StartupFlow, AFirstStartShowsOnlyTheWelcomeWhichScansTheChosenFolder) {
  const QString source = folder(QStringLiteral("source"));
  TempRepository top(true, QStringLiteral("top"));
  runProgram("git", {QStringLiteral("init"), "-q", source + QStringLiteral("/one")});
  runProgram("git", {QStringLiteral("init"), "-q", source + QStringLiteral("/group/two")});

  // Known before the welcome, outside the folder: it stays known.
  registry().addRepository(top.path());
  auto delegate = launch();
  ASSERT_TRUE(delegate->welcomeWindowController());
  EXPECT_TRUE(delegate->welcomeWindowController()->isVisible());
  EXPECT_TRUE(delegate->documents().windows().isEmpty());

  WelcomeWindowController* welcome = delegate->welcomeWindowController();
  welcome->folderField()->setText(source + QStringLiteral("/missing"));
  EXPECT_FALSE(welcome->continueButton()->isEnabled());
  welcome->folderField()->setText(source);
  QSignalSpy completed(welcome, &WelcomeWindowController::welcomeCompleted);
  welcome->continueButton()->click();
  ASSERT_TRUE(completed.wait(20000));
  EXPECT_EQ(completed.at(0).at(0).toInt(), 2);
  EXPECT_EQ(preferences().defaultSourceFolder(), source);
  EXPECT_TRUE(registry().repositoryItemExists(source + QStringLiteral("/group/two")));
  EXPECT_TRUE(registry().repositoryItemExists(top.path()));

  // Then the repository manager opens.
  ASSERT_EQ(delegate->documents().windows().size(), 1);
  EXPECT_EQ(tabsOf(*delegate->documents().windows().first()), (std::vector<TabView>{{managerTab, {}}}));
}

TEST_F(StartupFlow, OldTabsOpenOnceAndTheirFrontTabStaysInFront) {
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  preferences().setRepositorySessions({{alpha().path(), false}, {beta().path(), true}});
  {
    auto delegate = launch();
    ASSERT_TRUE(settle(delegate->documents()));
    EXPECT_FALSE(delegate->welcomeWindowController());
    ASSERT_EQ(delegate->documents().windows().size(), 1);
    JelvMainWindow* window = delegate->documents().windows().first();
    EXPECT_EQ(tabsOf(*window), (std::vector<TabView>{{repositoryTab, alpha().path()}, {repositoryTab, beta().path()}}));
    EXPECT_EQ(window->currentTab(), window->tab(1));
    // The user closes the window: nothing is left to restore.
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  auto next = launch();
  ASSERT_EQ(next->documents().windows().size(), 1);
  EXPECT_EQ(tabsOf(*next->documents().windows().first()), (std::vector<TabView>{{managerTab, {}}}));
}

TEST_F(StartupFlow, OpenTabsAndGeometryComeBackAtTheNextStart) {
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  std::vector<std::vector<TabView>> before;
  QSize firstSize;
  {
    auto delegate = launch({alpha().path()});
    JelvDocumentController& documents = delegate->documents();
    ASSERT_TRUE(settle(documents));
    JelvMainWindow* first = documents.windows().first();
    documents.newRepositoryManagerAsTab(first);
    documents.openRepository(beta().path(), first);
    ASSERT_TRUE(settle(documents));
    first->tabWidget()->setCurrentIndex(1);
    first->resize(900, 640);
    JelvMainWindow* second = documents.newRepositoryManagerAsWindow();
    for (JelvMainWindow* window : documents.windows()) before.push_back(tabsOf(*window));
    firstSize = first->size();
    ASSERT_EQ(second, documents.windows().last());
    documents.quit();  // saves, then closes everything
  }
  ASSERT_EQ(before.size(), 2u);
  EXPECT_EQ(before[0], (std::vector<TabView>{{repositoryTab, alpha().path()}, {managerTab, {}}, {repositoryTab, beta().path()}}));

  auto next = launch();
  ASSERT_TRUE(settle(next->documents()));
  const QList<JelvMainWindow*> windows = next->documents().windows();
  ASSERT_EQ(windows.size(), 2);
  EXPECT_EQ(tabsOf(*windows[0]), before[0]);
  EXPECT_EQ(tabsOf(*windows[1]), before[1]);
  EXPECT_EQ(windows[0]->tabWidget()->currentIndex(), 1);
  EXPECT_EQ(windows[0]->size(), firstSize);
}

// Folders and URLs on the command line open tabs; a later launch's folder, or an openRepo
// URL of a remote one of them has, fronts that tab instead of opening another.
TEST_F(StartupFlow, CommandLineFoldersAndUrlsOpenTabsAndLaterRequestsFrontThem) {
  alpha().git({"remote", "add", "origin", "https://example.com/ada/alpha.git"});
  beta().git({"remote", "add", "origin", "https://example.com/ada/beta.git"});
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  auto delegate = launch({alpha().path(), QStringLiteral("github-mac://openRepo/") + beta().path(),
                          QStringLiteral("sourcetree://cloneRepo?cloneUrl=https%3A%2F%2Fexample.com%2Fx.git")});
  JelvDocumentController& documents = delegate->documents();
  ASSERT_TRUE(settle(documents));
  ASSERT_EQ(documents.windows().size(), 1);
  JelvMainWindow* window = documents.windows().first();
  EXPECT_EQ(tabsOf(*window), (std::vector<TabView>{{repositoryTab, alpha().path()}, {repositoryTab, beta().path()}}));
  ASSERT_EQ(window->currentTab(), window->tab(1));

  delegate->handleArguments({alpha().path()});
  EXPECT_EQ(window->currentTab(), window->tab(0));
  EXPECT_EQ(window->tabCount(), 2);

  window->tabWidget()->setCurrentIndex(1);
  delegate->handleURLEvent(QStringLiteral("github-mac://openRepo/git@example.com:ada/alpha"));
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(window->currentTab(), window->tab(0));
  // A remote that no open repository has opens nothing.
  delegate->handleURLEvent(QStringLiteral("github-mac://openRepo/https://example.com/ada/gamma"));
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), window->tab(0));
}

TEST_F(StartupFlow, ALaterLaunchWithoutArgumentsReopensAWindowWhenNoneIsLeft) {
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  preferences().setValue(QStringLiteral("importedOldTabs"), true);
  AppDelegate delegate(registry(), preferences());
  delegate.setReachableByLaterLaunches(true);
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching({});
  ASSERT_EQ(delegate.documents().windows().size(), 1);

  // Closing the last window leaves the process running when a launch can reach it.
  delegate.documents().windows().first()->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(delegate.documents().windows().isEmpty());

  delegate.handleArguments({});
  ASSERT_EQ(delegate.documents().windows().size(), 1);
  EXPECT_EQ(tabsOf(*delegate.documents().windows().first()), (std::vector<TabView>{{managerTab, {}}}));
}

// A damaged repository list is moved aside at start; the user is told where it went.
TEST_F(StartupFlow, ADamagedRepositoryListIsAnnouncedWithWhereItWent) {
  const QString path = folder(QStringLiteral("damaged")) + QStringLiteral("/db.sqlite3");
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
  }
  AppSettings damaged(path);
  damaged.initializeDatabase();
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  auto delegate = launch({}, &damaged);
  QMessageBox* alert = nullptr;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == QStringLiteral("registryNotice") && widget->isVisible()) alert = qobject_cast<QMessageBox*>(widget);
    }
    return alert != nullptr;
  }, 5000));
  const QStringList aside = QDir(QFileInfo(path).absolutePath()).entryList({QStringLiteral("db.sqlite3.corrupt-*")}, QDir::Files);
  ASSERT_EQ(aside.size(), 1);
  EXPECT_TRUE(alert->text().contains(QFileInfo(path).absolutePath() + QLatin1Char('/') + aside.first())) << alert->text().toStdString();
}

// "Open Submodule in New Tab" puts the submodule, as a repository of its own, in a new tab
// of the same window; it does not join the registry, a second request fronts the same tab,
// and opening the folder by hand still refuses a submodule.
TEST_F(DocumentController, SubmoduleOfLocalChangesOpensInANewTab) {
  TempRepository library(true, QStringLiteral("library"));
  library.commitFile("lib.c", "int lib;\n", QStringLiteral("Library"));
  TempRepository app(true, QStringLiteral("app"));
  app.commitFile("main.c", "int main;\n", QStringLiteral("App"));
  app.git({"submodule", "add", "-q", library.path(), "ext/lib"});
  app.commit(QStringLiteral("Add submodule"));
  app.writeFile("ext/lib/lib.c", "int edited;\n");
  const QString submodulePath = app.path() + QStringLiteral("/ext/lib");

  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {app.path()});
  ASSERT_TRUE(window);
  ASSERT_EQ(window->tabCount(), 1);
  StageFileViewController* changes = window->tab(0)->document()->localChangesView();
  changes->reload();
  // A status read before the repository's first read knows no submodules yet.
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        return changes->unstagedList()->selectFile(QStringLiteral("ext/lib")) &&
               changes->unstagedList()->currentFile()->changedSubmodule() != nullptr;
      },
      10000));

  std::unique_ptr<QMenu> menu(changes->contextMenu(changes->unstagedList()));
  ASSERT_NE(menu, nullptr);
  // A submodule is no file to diff or to open with an application.
  EXPECT_EQ(findAction(menu.get(), QStringLiteral("External Diff")), nullptr);
  EXPECT_EQ(findAction(menu.get(), QStringLiteral("Open With")), nullptr);
  QAction* open = findAction(menu.get(), QStringLiteral("Open Submodule in New Tab"));
  ASSERT_NE(open, nullptr);
  open->trigger();
  ASSERT_TRUE(settle(documents));

  ASSERT_EQ(documents.windows().size(), 1);
  ASSERT_EQ(window->tabCount(), 2);
  JelvWindowController* tab = window->tab(1);
  EXPECT_EQ(tab->kind(), JelvWindowController::Kind::repository);
  EXPECT_EQ(tab->repositoryPath(), submodulePath);
  ASSERT_TRUE(tab->gitModule().has_value());
  EXPECT_EQ(tab->gitModule()->superProjectPath, app.path());
  EXPECT_EQ(window->currentTab(), tab);
  EXPECT_EQ(window->tabWidget()->tabText(1), QStringLiteral("lib"));
  EXPECT_FALSE(registry().repositoryItemExists(submodulePath));
  EXPECT_TRUE(registry().repositoryItemExists(app.path()));

  window->tabWidget()->setCurrentIndex(0);
  menu.reset(changes->contextMenu(changes->unstagedList()));
  findAction(menu.get(), QStringLiteral("Open Submodule in New Tab"))->trigger();
  ASSERT_TRUE(settle(documents));
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), tab);

  // The saved session holds the submodule's tab, and the next start brings it back.
  const std::vector<WindowSession> saved = documents.windowSessions();
  ASSERT_EQ(saved.size(), 1u);
  ASSERT_EQ(saved.front().tabs.size(), 2u);
  EXPECT_EQ(saved.front().tabs[1].repositoryPath, submodulePath);
  {
    JelvDocumentController restarted(registry(), preferences());
    restarted.restoreWindows(saved);
    ASSERT_TRUE(settle(restarted));
    ASSERT_EQ(restarted.windows().size(), 1);
    ASSERT_EQ(restarted.windows().first()->tabCount(), 2);
    EXPECT_EQ(restarted.windows().first()->tab(1)->kind(), JelvWindowController::Kind::repository);
    EXPECT_EQ(restarted.windows().first()->tab(1)->repositoryPath(), submodulePath);
  }

  window->closeTab(tab, false);
  ASSERT_EQ(window->tabCount(), 1);
  QSignalSpy failed(&documents, &JelvDocumentController::openFailed);
  documents.openRepository(submodulePath);
  ASSERT_TRUE(settle(documents));
  ASSERT_EQ(failed.count(), 1);
  EXPECT_EQ(failed.front().front().toString(),
            QStringLiteral("The '") + submodulePath + QStringLiteral("' is a submodule of another git repository."));
  EXPECT_EQ(window->tabCount(), 1);
}

// Without a file manager, Show in Folder says so instead of doing nothing.
TEST_F(DocumentController, ShowInFolderWithoutAFileManagerSaysSo) {
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha().path()});
  ASSERT_TRUE(window);
  const QByteArray dataHome = qgetenv("XDG_DATA_HOME"), dataDirs = qgetenv("XDG_DATA_DIRS");
  qputenv("XDG_DATA_HOME", folder(QStringLiteral("data")).toLocal8Bit());
  qputenv("XDG_DATA_DIRS", folder(QStringLiteral("share")).toLocal8Bit());
  window->tab(0)->findChild<QAction*>(QStringLiteral("showInFolderAction"))->trigger();
  qputenv("XDG_DATA_HOME", dataHome);
  qputenv("XDG_DATA_DIRS", dataDirs);
  auto* alert = window->findChild<QMessageBox*>(QStringLiteral("showInFolderAlert"));
  ASSERT_TRUE(alert);
  EXPECT_TRUE(alert->isVisible());
  EXPECT_TRUE(alert->text().contains(alpha().path())) << alert->text().toStdString();
  EXPECT_TRUE(alert->informativeText().contains(QStringLiteral("No file manager"))) << alert->informativeText().toStdString();
}

TEST_F(DocumentController, AboutTellsTheVersionTheGitInUseAndTheLicences) {
  AboutWindow about;
  QSignalSpy read(&about, &AboutWindow::gitVersionRead);
  ASSERT_TRUE(read.wait(10000));
  const QString text = about.text();
  EXPECT_TRUE(text.contains(QStringLiteral("Version 0.1.0"))) << text.toStdString();
  EXPECT_TRUE(about.gitLabel()->text().startsWith(QStringLiteral("git 2."))) << about.gitLabel()->text().toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("Qt 6 — GNU Lesser General Public License v3")));
  EXPECT_TRUE(text.contains(QStringLiteral("SQLite — Public domain")));
  // An optional library is listed as the build has it: cmark exactly when Markdown renders.
  EXPECT_EQ(text.contains(QStringLiteral("cmark — BSD 2-Clause License")),
            RepositoryReadme::markdownToHtml("# Title").contains(QStringLiteral("<h1>")));
}

// Closing a tab cancels its jobs and no other's; a job slow to notice the cancel does not
// hold the window: the tab goes at once and the job ends later on its own. Closing the
// last tab closes the window, and with it the last window.
TEST_F(DocumentController, ClosingATabCancelsItsJobsOnlyAndDoesNotWaitForThem) {
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha().path(), beta().path()});
  ASSERT_TRUE(window);
  ASSERT_EQ(window->tabCount(), 2);
  QPointer<JelvWindowController> closing = window->tab(1);
  std::weak_ptr<JobQueue> queue = closing->jobQueue();
  std::atomic<bool> release = false;
  auto stubborn = Job::make(QStringLiteral("Stubborn"), Job::Show::none(), Job::ProgressType::infinite, [&release](JobProgress&) {
    while (!release) QThread::msleep(5);
  });
  queue.lock()->schedule(stubborn);
  auto staying = scheduleWaitingJob(*window->tab(0)->jobQueue());
  ASSERT_TRUE(QTest::qWaitFor([&] { return stubborn->status() == Job::Status::running; }, 5000));

  QElapsedTimer timer;
  timer.start();
  window->action(QStringLiteral("closeTabAction"))->trigger();  // beta is in front
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(closing.isNull());
  EXPECT_LT(timer.elapsed(), 2000);
  EXPECT_TRUE(stubborn->progress().isCanceled());
  EXPECT_FALSE(staying->progress().isCanceled());
  EXPECT_EQ(tabTitles(*window), QStringList{"alpha"});
  EXPECT_FALSE(queue.expired());
  release = true;
  ASSERT_TRUE(ReleasedQueues::waitForAll(5000));
  EXPECT_TRUE(queue.expired());
  EXPECT_EQ(stubborn->status(), Job::Status::finished);
  staying->progress().cancel();

  QSignalSpy last(&documents, &JelvDocumentController::lastWindowClosed);
  window->action(QStringLiteral("closeTabAction"))->trigger();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(last.size(), 1);
  EXPECT_TRUE(documents.windows().isEmpty());
}

// The Repository and View menus act on the tab in front, and say what they will do; with
// the repositories tab in front they have nothing to act on. The plus button brings that
// tab forward rather than opening a second one. Every menu key is listed, and no key does
// two things: the repository's menu, the toolbar's own keys, the views' own keys and the
// repositories tab's keys included. The repository's operations take no key that Qt gives
// a meaning of its own (in a text field the field would win).
TEST_F(DocumentController, TheMenusFollowTheTabInFrontAndEveryKeyIsListedOnce) {
  alpha().commitFile("a.txt", "a\n", "Initial");
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha().path()});
  ASSERT_TRUE(window);
  auto* menu = window->findChild<QMenu*>(QStringLiteral("repositoryMenu"));
  QMenu* view = viewMenu(*window);
  ASSERT_TRUE(menu && view);
  auto enabledNames = [menu] {
    Q_EMIT menu->aboutToShow();
    QStringList names;
    for (QAction* action : menu->actions()) {
      if (!action->isSeparator() && action->isEnabled()) names << action->objectName();
    }
    return names;
  };
  EXPECT_EQ(enabledNames(), (QStringList{"refreshAction", "localChangesAction", "historyAction", "searchAction", "showInFolderAction",
                                         "activityAction"}));
  QAction* hideTags = opened(view, QStringLiteral("Hide Tags"));
  ASSERT_TRUE(hideTags);
  hideTags->trigger();
  EXPECT_TRUE(GitModuleSettings::load(alpha().module()).hideTags);
  // Opened again, the menu offers the way back, once.
  EXPECT_FALSE(opened(view, QStringLiteral("Hide Tags")));
  ASSERT_TRUE(opened(view, QStringLiteral("Show Tags")));

  documents.newRepositoryManagerAsTab(window);
  EXPECT_TRUE(enabledNames().isEmpty());
  EXPECT_FALSE(opened(view, QStringLiteral("Show Tags")));
  EXPECT_TRUE(opened(view, QStringLiteral("Select Next Tab")));
  window->selectPreviousTab();
  EXPECT_EQ(enabledNames().size(), 6);

  auto* plus = window->findChild<QToolButton*>(QStringLiteral("newTabButton"));
  ASSERT_TRUE(plus);
  plus->click();
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab()->kind(), JelvWindowController::Kind::repositoryManager);

  // A key that acts on the selected commit follows the selection, not only a refresh.
  window->selectTab(window->tab(0));
  JelvDocument* document = window->tab(0)->document();
  QSignalSpy loaded(document, &JelvDocument::snapshotLoaded);
  ASSERT_TRUE(document->controller()->repositoryData() || loaded.wait(20000));
  auto* cherryPick = window->tab(0)->findChild<QAction*>(QStringLiteral("cherryPickAction"));
  ASSERT_TRUE(cherryPick);
  document->commitList()->selectionModel()->clear();
  EXPECT_FALSE(cherryPick->isEnabled());
  document->commitList()->selectRow(0);
  EXPECT_TRUE(cherryPick->isEnabled());

  window->action(QStringLiteral("keyboardShortcutsAction"))->trigger();
  auto* shortcuts = window->findChild<KeyboardShortcutsWindow*>();
  ASSERT_TRUE(shortcuts);
  QStringList rows;
  for (int i = 0; i < shortcuts->list()->topLevelItemCount(); ++i) {
    const QTreeWidgetItem* section = shortcuts->list()->topLevelItem(i);
    for (int j = 0; j < section->childCount(); ++j) rows << section->text(0) + QStringLiteral(": ") + section->child(j)->text(0) + QStringLiteral(" = ") + section->child(j)->text(1);
  }
  const std::string listed = rows.join(QLatin1Char('\n')).toStdString();
  for (const char* row : {"File: Close Tab = Ctrl+W", "Help: Keyboard Shortcuts = Ctrl+/", "Repository: Fetch... = Ctrl+Shift+F",
                          "Repository: Local Changes = Ctrl+1", "Repository: Activity = Ctrl+Shift+Y", "Repository: Refresh = Ctrl+R",
                          "Repository: Search Commits = Ctrl+F", "Repository: Cherry-Pick... = Ctrl+Shift+C",
                          "View: Select Previous Tab = Ctrl+Shift+Tab, Ctrl+PgUp"}) {
    EXPECT_TRUE(rows.contains(QString::fromUtf8(row))) << row << "\n" << listed;
  }
  EXPECT_FALSE(QString::fromStdString(listed).contains(QStringLiteral("Export Profiling Data")));

  QHash<QString, QString> owner;
  const auto take = [&owner](const QKeySequence& keys, const QString& name) {
    const QString key = keys.toString();
    if (owner.contains(key) && owner.value(key) != name) ADD_FAILURE() << key.toStdString() << ": " << owner.value(key).toStdString() << " and " << name.toStdString();
    owner.insert(key, name);
  };
  QList<QAction*> actions = window->findChildren<QAction*>();
  QList<QShortcut*> keyObjects = window->findChildren<QShortcut*>();
  for (int i = 0; i < window->tabCount(); ++i) {
    actions << window->tab(i)->findChildren<QAction*>();
    keyObjects << window->tab(i)->findChildren<QShortcut*>();
  }
  for (QAction* action : actions) {
    for (const QKeySequence& keys : action->shortcuts()) take(keys, action->text().remove(QLatin1Char('&')));
  }
  for (QShortcut* shortcut : keyObjects) {
    // The Help windows are windows of their own, with their own Ctrl+W.
    if (qobject_cast<QWidget*>(shortcut->parent())->window() != window) continue;
    for (const QKeySequence& keys : shortcut->keys()) take(keys, shortcut->objectName());
  }

  QStringList standard;
  const QMetaEnum standardKeys = QMetaEnum::fromType<QKeySequence::StandardKey>();
  for (int i = 0; i < standardKeys.keyCount(); ++i) {
    for (const QKeySequence& keys : QKeySequence::keyBindings(QKeySequence::StandardKey(standardKeys.value(i)))) standard << keys.toString();
  }
  for (const CommandDescriptor& command : CommandTable::all()) {
    EXPECT_FALSE(!command.shortcut.isEmpty() && standard.contains(command.shortcut.toString())) << command.shortcut.toString().toStdString();
  }
}
