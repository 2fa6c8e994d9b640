#include <QMenu>
#include <QMenuBar>

#include "Models/GitModuleSettings.h"
#include "ShellTestSupport.h"
#include "UI/JelvMainWindow.h"
#include "support/TempRepository.h"

namespace {
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

using ViewMenuDisplay = ShellTest;

TEST_F(ViewMenuDisplay, TheViewMenuTogglesTheFrontRepositorysCommitListAndSaysWhatItWillDo) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("Initial"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  QMenu* view = viewMenu(*window);
  ASSERT_TRUE(view);

  QAction* hideTags = opened(view, QStringLiteral("Hide Tags"));
  ASSERT_TRUE(hideTags);
  hideTags->trigger();
  EXPECT_TRUE(GitModuleSettings::load(alpha.module()).hideTags);
  // Opened again, the menu offers the way back, once.
  EXPECT_FALSE(opened(view, QStringLiteral("Hide Tags")));
  ASSERT_TRUE(opened(view, QStringLiteral("Show Tags")));
  opened(view, QStringLiteral("Hide Remote Branches in Commit List"))->trigger();
  EXPECT_TRUE(GitModuleSettings::load(alpha.module()).hideRemoteBranches);
  EXPECT_TRUE(opened(view, QStringLiteral("Show Remote Branches in Commit List")));

  // With the manager in front there is nothing to toggle.
  documents.newRepositoryManagerAsTab(window);
  EXPECT_FALSE(opened(view, QStringLiteral("Show Tags")));
  EXPECT_TRUE(opened(view, QStringLiteral("Select Next Tab")));
}
