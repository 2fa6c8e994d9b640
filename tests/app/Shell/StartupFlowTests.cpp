#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>

#include "Models/RepositoryValidation.h"
#include "Services/ApplicationStartup.h"
#include "ShellTestSupport.h"
#include "UI/AppDelegate.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "UI/WelcomeWindowController.h"
#include "support/TempRepository.h"

namespace {

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

}  // namespace

using StartupFlow = ShellTest;

TEST_F(StartupFlow, AFirstStartShowsOnlyTheWelcomeWhichScansTheChosenFolder) {
  const QString source = folder(QStringLiteral("source"));
  TempRepository top(true, QStringLiteral("top"));
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), source + QStringLiteral("/one")});
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), source + QStringLiteral("/group/two")});

  // Known before the welcome, outside the folder: it stays known.
  registry().addRepository(top.path());
  AppDelegate delegate(registry(), preferences());
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching({});
  ASSERT_TRUE(delegate.welcomeWindowController());
  EXPECT_TRUE(delegate.welcomeWindowController()->isVisible());
  EXPECT_TRUE(delegate.documents().windows().isEmpty());

  WelcomeWindowController* welcome = delegate.welcomeWindowController();
  welcome->folderField()->setText(source + QStringLiteral("/missing"));
  EXPECT_FALSE(welcome->continueButton()->isEnabled());
  welcome->folderField()->setText(source);
  QSignalSpy completed(welcome, &WelcomeWindowController::welcomeCompleted);
  welcome->continueButton()->click();
  ASSERT_TRUE(completed.wait(20000));
  EXPECT_EQ(completed.at(0).at(0).toInt(), 2);
  EXPECT_EQ(preferences().defaultSourceFolder(), source);
  EXPECT_TRUE(registry().repositoryItemExists(source + QStringLiteral("/one")));
  EXPECT_TRUE(registry().repositoryItemExists(source + QStringLiteral("/group/two")));
  EXPECT_TRUE(registry().repositoryItemExists(top.path()));

  // Then the repository manager opens.
  ASSERT_EQ(delegate.documents().windows().size(), 1);
  EXPECT_EQ(tabsOf(*delegate.documents().windows().first()), (std::vector<TabView>{{managerTab, {}}}));
}

TEST_F(StartupFlow, OldTabsOpenOnceAndTheirFrontTabStaysInFront) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  TempRepository beta(true, QStringLiteral("beta"));
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  preferences().setRepositorySessions({{alpha.path(), false}, {beta.path(), true}});
  {
    AppDelegate delegate(registry(), preferences());
    delegate.applicationWillFinishLaunching();
    delegate.applicationDidFinishLaunching({});
    ASSERT_TRUE(settle(delegate.documents()));
    EXPECT_FALSE(delegate.welcomeWindowController());
    ASSERT_EQ(delegate.documents().windows().size(), 1);
    JelvMainWindow* window = delegate.documents().windows().first();
    EXPECT_EQ(tabsOf(*window), (std::vector<TabView>{{repositoryTab, alpha.path()}, {repositoryTab, beta.path()}}));
    EXPECT_EQ(window->currentTab(), window->tab(1));
    // The user closes the window: nothing is left to restore.
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  AppDelegate next(registry(), preferences());
  next.applicationWillFinishLaunching();
  next.applicationDidFinishLaunching({});
  ASSERT_EQ(next.documents().windows().size(), 1);
  EXPECT_EQ(tabsOf(*next.documents().windows().first()), (std::vector<TabView>{{managerTab, {}}}));
}

TEST_F(StartupFlow, OpenTabsAndGeometryComeBackAtTheNextStart) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  TempRepository beta(true, QStringLiteral("beta"));
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  std::vector<std::vector<TabView>> before;
  QSize firstSize;
  {
    AppDelegate delegate(registry(), preferences());
    delegate.applicationWillFinishLaunching();
    delegate.applicationDidFinishLaunching({alpha.path()});
    JelvDocumentController& documents = delegate.documents();
    ASSERT_TRUE(settle(documents));
    JelvMainWindow* first = documents.windows().first();
    documents.newRepositoryManagerAsTab(first);
    documents.openRepository(beta.path(), first);
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
  EXPECT_EQ(before[0], (std::vector<TabView>{{repositoryTab, alpha.path()}, {managerTab, {}}, {repositoryTab, beta.path()}}));

  AppDelegate next(registry(), preferences());
  next.applicationWillFinishLaunching();
  next.applicationDidFinishLaunching({});
  ASSERT_TRUE(settle(next.documents()));
  const QList<JelvMainWindow*> windows = next.documents().windows();
  ASSERT_EQ(windows.size(), 2);
  EXPECT_EQ(tabsOf(*windows[0]), before[0]);
  EXPECT_EQ(tabsOf(*windows[1]), before[1]);
  EXPECT_EQ(windows[0]->tabWidget()->currentIndex(), 1);
  EXPECT_EQ(windows[0]->size(), firstSize);
}

TEST_F(StartupFlow, CommandLineFoldersAndUrlsOpenTabsAndARefusalIsShown) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  TempRepository beta(true, QStringLiteral("beta"));
  const QString plain = folder(QStringLiteral("plain"));
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));

  AppDelegate delegate(registry(), preferences());
  delegate.applicationWillFinishLaunching();
  QSignalSpy failed(&delegate.documents(), &JelvDocumentController::openFailed);
  delegate.applicationDidFinishLaunching(
      {alpha.path(), plain, QStringLiteral("github-mac://openRepo/") + beta.path(),
       QStringLiteral("sourcetree://cloneRepo?cloneUrl=https%3A%2F%2Fexample.com%2Fx.git")});
  ASSERT_TRUE(settle(delegate.documents()));
  ASSERT_EQ(delegate.documents().windows().size(), 1);
  EXPECT_EQ(tabsOf(*delegate.documents().windows().first()),
            (std::vector<TabView>{{repositoryTab, alpha.path()}, {repositoryTab, beta.path()}}));
  ASSERT_EQ(failed.size(), 1);
  EXPECT_EQ(failed.at(0).at(0).toString(), RepositoryValidation::openFailureText(RepositoryRefusal::notARepository, plain));

  // A later launch hands its folder over: the open tab comes to the front, no new one.
  delegate.documents().windows().first()->tabWidget()->setCurrentIndex(1);
  delegate.handleArguments({alpha.path()});
  EXPECT_EQ(delegate.documents().windows().first()->tabWidget()->currentIndex(), 0);
  EXPECT_EQ(delegate.documents().windows().first()->tabCount(), 2);
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

TEST_F(StartupFlow, AnOpenRepoUrlWithARemoteFrontsTheTabThatHasIt) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.git({QStringLiteral("remote"), QStringLiteral("add"), QStringLiteral("origin"), QStringLiteral("https://example.com/ada/alpha.git")});
  TempRepository beta(true, QStringLiteral("beta"));
  beta.git({QStringLiteral("remote"), QStringLiteral("add"), QStringLiteral("origin"), QStringLiteral("https://example.com/ada/beta.git")});
  preferences().setDefaultSourceFolder(folder(QStringLiteral("source")));
  AppDelegate delegate(registry(), preferences());
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching({alpha.path(), beta.path()});
  ASSERT_TRUE(settle(delegate.documents()));
  JelvMainWindow* window = delegate.documents().windows().first();
  ASSERT_EQ(window->currentTab(), window->tab(1));

  delegate.handleURLEvent(QStringLiteral("github-mac://openRepo/git@example.com:ada/alpha"));
  ASSERT_TRUE(settle(delegate.documents()));
  EXPECT_EQ(window->currentTab(), window->tab(0));

  // A remote that no open repository has opens nothing.
  delegate.handleURLEvent(QStringLiteral("github-mac://openRepo/https://example.com/ada/gamma"));
  ASSERT_TRUE(settle(delegate.documents()));
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), window->tab(0));
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
  AppDelegate delegate(damaged, preferences());
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching({});
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
