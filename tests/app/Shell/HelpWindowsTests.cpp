#include <QAction>
#include <QHash>
#include <QLabel>
#include <QSignalSpy>
#include <QTreeWidget>

#include "ShellTestSupport.h"
#include "UI/AboutWindow.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"

using HelpWindows = ShellTest;

TEST_F(HelpWindows, AboutTellsTheVersionTheGitInUseAndTheLicences) {
  AboutWindow about;
  QSignalSpy read(&about, &AboutWindow::gitVersionRead);
  ASSERT_TRUE(read.wait(10000));
  const QString text = about.text();
  EXPECT_TRUE(text.contains(QStringLiteral("Version 0.1.0"))) << text.toStdString();
  EXPECT_TRUE(about.gitLabel()->text().startsWith(QStringLiteral("git 2."))) << about.gitLabel()->text().toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("Qt 6 — GNU Lesser General Public License v3")));
  EXPECT_TRUE(text.contains(QStringLiteral("SQLite — Public domain")));
}

// Every menu key is listed, and no key does two things: the repository's menu, the
// toolbar's own keys and the repositories tab's keys included.
TEST_F(HelpWindows, KeyboardShortcutsListEveryKeyOnceAndNoKeyIsTakenTwice) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  alpha.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("Initial"));
  JelvDocumentController documents(registry(), preferences());
  JelvMainWindow* window = openAll(documents, {alpha.path()});
  ASSERT_TRUE(window);
  documents.newRepositoryManagerAsTab(window);
  window->selectTab(window->tab(0));
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
                          "Repository: Local Changes = Ctrl+1", "Repository: Activity = Ctrl+Shift+Y"}) {
    EXPECT_TRUE(rows.contains(QString::fromUtf8(row))) << row << "\n" << listed;
  }
  EXPECT_FALSE(QString::fromStdString(listed).contains(QStringLiteral("Export Profiling Data")));

  QHash<QString, QString> owner;
  QList<QAction*> actions = window->findChildren<QAction*>();
  for (int i = 0; i < window->tabCount(); ++i) actions << window->tab(i)->findChildren<QAction*>();
  for (QAction* action : actions) {
    for (const QKeySequence& keys : action->shortcuts()) {
      const QString key = keys.toString();
      const QString name = action->text().remove(QLatin1Char('&'));
      if (owner.contains(key) && owner.value(key) != name) ADD_FAILURE() << key.toStdString() << ": " << owner.value(key).toStdString() << " and " << name.toStdString();
      owner.insert(key, name);
    }
  }
}
