#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTabWidget>
#include <memory>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "UI/JelvDocument.h"
#include "Models/WindowSession.h"
#include "ShellTestSupport.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

using SubmoduleTab = ShellTest;

// "Open Submodule in New Tab" puts the submodule, as a repository of its own, in a new tab
// of the same window; it does not join the registry, a second request fronts the same tab,
// and opening the folder by hand still refuses a submodule.
TEST_F(SubmoduleTab, SubmoduleOfLocalChangesOpensInANewTab) {
  TempRepository library(true, QStringLiteral("library"));
  library.commitFile(QStringLiteral("lib.c"), "int lib;\n", QStringLiteral("Library"));
  TempRepository app(true, QStringLiteral("app"));
  app.commitFile(QStringLiteral("main.c"), "int main;\n", QStringLiteral("App"));
  app.git({QStringLiteral("submodule"), QStringLiteral("add"), QStringLiteral("-q"), library.path(), QStringLiteral("ext/lib")});
  app.commit(QStringLiteral("Add submodule"));
  app.writeFile(QStringLiteral("ext/lib/lib.c"), "int edited;\n");
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
