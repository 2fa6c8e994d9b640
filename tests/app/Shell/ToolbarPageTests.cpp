#include <QAction>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

#include "UI/JelvDocument.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "ShellTestSupport.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"

using ToolbarPage = ShellTest;

// The toolbar marks the page on screen, however it was chosen.
TEST_F(ToolbarPage, ThePageOnScreenIsChecked) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("Initial"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  JelvWindowController* tab = window->tab(0);
  auto* changes = tab->findChild<QAction*>(QStringLiteral("localChangesAction"));
  auto* history = tab->findChild<QAction*>(QStringLiteral("historyAction"));
  ASSERT_TRUE(changes && history);
  RepositorySidebar* sidebar = tab->document()->sidebar();
  ASSERT_TRUE(QTest::qWaitFor([&] { return sidebar->localChangesItem() && sidebar->allCommitsItem(); }, 10000));

  sidebar->setCurrentItem(sidebar->localChangesItem());
  EXPECT_TRUE(changes->isChecked());
  EXPECT_FALSE(history->isChecked());
  sidebar->setCurrentItem(sidebar->allCommitsItem());
  EXPECT_TRUE(history->isChecked());
  EXPECT_FALSE(changes->isChecked());
  changes->trigger();
  EXPECT_TRUE(changes->isChecked());
  EXPECT_EQ(sidebar->currentItem(), sidebar->localChangesItem());

  // Its keys work anywhere in the tab.
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  sidebar->setFocus();
  QTest::keyClick(sidebar, Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(sidebar->currentItem(), sidebar->allCommitsItem());
  QTest::keyClick(sidebar, Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(sidebar->currentItem(), sidebar->localChangesItem());
}

TEST_F(ToolbarPage, PlusBringsTheRepositoriesTabForwardRatherThanASecondOne) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  documents.newRepositoryManagerAsTab(window);
  window->selectTab(window->tab(0));
  const int before = window->tabCount();
  auto* plus = window->findChild<QToolButton*>(QStringLiteral("newTabButton"));
  ASSERT_TRUE(plus);
  plus->click();
  EXPECT_EQ(window->tabCount(), before);
  EXPECT_EQ(window->currentTab()->kind(), JelvWindowController::Kind::repositoryManager);
}

// Without a file manager, Show in Folder says so instead of doing nothing.
TEST_F(ToolbarPage, ShowInFolderWithoutAFileManagerSaysSo) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
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
  EXPECT_TRUE(alert->text().contains(alpha.path())) << alert->text().toStdString();
  EXPECT_TRUE(alert->informativeText().contains(QStringLiteral("No file manager"))) << alert->informativeText().toStdString();
}
