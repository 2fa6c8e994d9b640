// The quick launch in a real window: typed into, driven by keys, running what it lists.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

#include "Commands/QuickLaunchSession.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/History/BlameWindowController.h"
#include "Models/CustomCommands/CustomCommandAction.h"
#include "Services/CustomCommandManager.h"
#include "Controllers/QuickLaunch/QuickLaunchListModel.h"
#include "Controllers/QuickLaunch/QuickLaunchWindowController.h"
#include "Repository/RepositoryController.h"
#include "UI/JelvDocument.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "app/Shell/ShellFixture.h"
#include "support/TempRepository.h"

namespace {

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

// "# Header", "title", "title | secondary" or "title (disabled)" for each row.
QStringList rows(const QListView& list) {
  QStringList out;
  const QAbstractItemModel* model = list.model();
  for (int row = 0; row < model->rowCount(); ++row) {
    const QModelIndex index = model->index(row, 0);
    if (index.data(QuickLaunchListModel::isHeaderRole).toBool()) {
      out << QStringLiteral("# ") + index.data().toString();
    } else {
      out << index.data().toString();
    }
  }
  return out;
}

// A window with the repository "jelv" open, and "other-project" in the registry.
class QuickLaunchTest : public ShellTest {
 protected:
  void SetUp() override {
    ShellTest::SetUp();
    repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("first"));
    repo.git({QStringLiteral("branch"), QStringLiteral("topic")});
    repo.git({QStringLiteral("branch"), QStringLiteral("feature")});
    other.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("other"));
    registry().addRepository(other.path());
    documents = std::make_unique<JelvDocumentController>(registry(), preferences());
    window = openAll(*documents, {repo.path()});
    ASSERT_TRUE(window);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    JelvDocument* view = window->currentTab()->document();
    ASSERT_TRUE(view);
    ASSERT_TRUE(view->controller()->repositoryData() || QSignalSpy(view, &JelvDocument::snapshotLoaded).wait(20000));
  }
  void TearDown() override {
    documents.reset();
    ShellTest::TearDown();
  }

  QuickLaunchWindowController* openPanel() {
    window->currentTab()->setFocus();
    QTest::keyClick(window, Qt::Key_J, Qt::ControlModifier);
    auto* panel = window->findChild<QuickLaunchWindowController*>();
    EXPECT_TRUE(panel && panel->isVisible());
    EXPECT_TRUE(panel && panel->textField()->hasFocus());
    return panel;
  }
  // Types the text and waits for the list to follow it.
  static void type(QuickLaunchWindowController* panel, const QString& text) {
    QTest::keyClicks(panel->textField(), text);
    QTest::qWait(QuickLaunchWindowController::refreshDelayMs * 3);
  }
  static QString selectedTitle(QuickLaunchWindowController* panel) { return panel->list()->currentIndex().data().toString(); }

  TempRepository repo{true, QStringLiteral("jelv")};
  TempRepository other{true, QStringLiteral("other-project")};
  std::unique_ptr<JelvDocumentController> documents;
  JelvMainWindow* window = nullptr;
};

}  // namespace

TEST_F(QuickLaunchTest, TypingFindsACommandThatAsksForItsBranchAndChecksItOut) {
  QuickLaunchWindowController* panel = openPanel();
  ASSERT_TRUE(panel);
  // Fast typing refreshes the list once.
  QSignalSpy refreshed(panel->list()->model(), &QAbstractItemModel::modelReset);
  type(panel, QStringLiteral("chkbr"));
  EXPECT_EQ(refreshed.size(), 1);
  EXPECT_EQ(rows(*panel->list()).mid(0, 2), (QStringList{"# Commands", "Checkout Branch"}));
  EXPECT_EQ(selectedTitle(panel), QStringLiteral("Checkout Branch"));

  QTest::keyClick(panel->textField(), Qt::Key_Return);
  // The branches Checkout can take: not the one checked out.
  EXPECT_EQ(panel->textField()->placeholderText(), QStringLiteral("Checkout Branch: choose a branch"));
  EXPECT_EQ(rows(*panel->list()), (QStringList{"# Branches", "feature", "topic"}));
  type(panel, QStringLiteral("top"));
  QTest::keyClick(panel->textField(), Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return repo.git({QStringLiteral("symbolic-ref"), QStringLiteral("HEAD")}).trimmed() == "refs/heads/topic"; }, 20000));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(window->findChild<QuickLaunchWindowController*>());
}

TEST_F(QuickLaunchTest, ListsEveryMenuCommandWithItsStateAndKeys) {
  QuickLaunchWindowController* panel = openPanel();
  ASSERT_TRUE(panel);
  QHash<QString, QPair<bool, QString>> listed;
  const QAbstractItemModel* model = panel->list()->model();
  for (int row = 0; row < model->rowCount(); ++row) {
    const QModelIndex index = model->index(row, 0);
    listed.insert(index.data().toString(), {!index.data(QuickLaunchListModel::isDisabledRole).toBool(),
                                            index.data(QuickLaunchListModel::secondaryTextRole).toString()});
  }
  int checked = 0;
  std::function<void(QMenu*)> walk = [&](QMenu* menu) {
    Q_EMIT menu->aboutToShow();
    for (QAction* action : menu->actions()) {
      if (action->menu()) walk(action->menu());
      if (action->menu() || action->isSeparator() || !action->isVisible() || action->objectName().isEmpty() ||
          action->objectName() == QStringLiteral("quickLaunch")) {
        continue;
      }
      const QString title = action->text().remove(QLatin1Char('&'));
      ASSERT_TRUE(listed.contains(title)) << title.toStdString();
      EXPECT_EQ(listed.value(title).first, action->isEnabled()) << title.toStdString();
      EXPECT_EQ(listed.value(title).second, action->shortcut().toString(QKeySequence::NativeText)) << title.toStdString();
      ++checked;
    }
  };
  for (QAction* top : window->menuBar()->actions()) walk(top->menu());
  EXPECT_GT(checked, 30);
  EXPECT_EQ(listed.value(QStringLiteral("Fetch...")).second, QStringLiteral("Ctrl+Shift+F"));
  // Context menu entries the palette can complete come too.
  EXPECT_TRUE(listed.contains(QStringLiteral("Delete Branch...")));
}

TEST_F(QuickLaunchTest, KeysSkipHeadersEscapeOrLosingFocusClosesAndARepositoryOpens) {
  QuickLaunchWindowController* panel = openPanel();
  ASSERT_TRUE(panel);
  const QAbstractItemModel* model = panel->list()->model();
  ASSERT_TRUE(model->index(0, 0).data(QuickLaunchListModel::isHeaderRole).toBool());
  EXPECT_EQ(panel->list()->currentIndex().row(), 1);
  QTest::keyClick(panel->textField(), Qt::Key_Up);
  EXPECT_EQ(panel->list()->currentIndex().row(), 1);
  // Down through the whole list never stops on a header.
  int headersPassed = 0;
  for (int step = 0; step < model->rowCount(); ++step) {
    const int before = panel->list()->currentIndex().row();
    QTest::keyClick(panel->textField(), Qt::Key_Down);
    const int after = panel->list()->currentIndex().row();
    ASSERT_FALSE(model->index(after, 0).data(QuickLaunchListModel::isHeaderRole).toBool()) << after;
    if (after > before + 1) ++headersPassed;
  }
  EXPECT_GE(headersPassed, 1);
  QTest::keyClick(panel->textField(), Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(window->findChild<QuickLaunchWindowController*>());

  panel = openPanel();
  ASSERT_TRUE(panel);
  window->currentTab()->document()->commitList()->setFocus();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(window->findChild<QuickLaunchWindowController*>());

  panel = openPanel();
  ASSERT_TRUE(panel);
  type(panel, QStringLiteral("other"));
  EXPECT_EQ(rows(*panel->list()).mid(0, 2), (QStringList{"# Repositories", "other-project"}));
  QTest::keyClick(panel->textField(), Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([&] { return documents->pendingOpens() == 0 && window->tabCount() == 2; }, 20000));
  EXPECT_EQ(window->currentTab()->repositoryPath(), other.path());
}

// A file argument waits for git's list of the tracked files; a custom command on the
// repository runs from the list as from its menu.
TEST_F(QuickLaunchTest, BlameAsksForATrackedFileAndACustomCommandRuns) {
  repo.writeFile(QStringLiteral("untracked.txt"), "u\n");
  QuickLaunchWindowController* panel = openPanel();
  ASSERT_TRUE(panel);
  type(panel, QStringLiteral("blame"));
  ASSERT_EQ(selectedTitle(panel), QStringLiteral("Blame..."));
  QTest::keyClick(panel->textField(), Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !panel->session()->isLoading(); }, 20000));
  EXPECT_EQ(rows(*panel->list()), (QStringList{"# Repository Files", "a.txt"}));
  QTest::keyClick(panel->textField(), Qt::Key_Return);
  BlameWindowController* blame = nullptr;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<BlameWindowController*>(widget); found && found->isVisible()) blame = found;
    }
    return blame != nullptr;
  }, 20000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return blame->windowTitle() == QStringLiteral("Blame: a.txt"); }, 20000)) << blame->windowTitle().toStdString();
  blame->close();

  repo.writeExecutable(QStringLiteral("record.sh"), "#!/bin/sh\npwd > ran.txt\n");
  auto command = std::make_shared<CustomCommand>();
  command->name = QStringLiteral("Record Folder");
  command->action = std::make_shared<ProcessCustomCommandAction>(QStringLiteral("$path/record.sh"), QString(), false, true);
  CustomCommandManager::shared().setCustomCommands({command});
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  panel = openPanel();
  ASSERT_TRUE(panel);
  type(panel, QStringLiteral("Record Folder"));
  EXPECT_EQ(rows(*panel->list()), (QStringList{"# Custom Commands", "Record Folder"}));
  QTest::keyClick(panel->textField(), Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return repo.readFile(QStringLiteral("ran.txt")).trimmed() == repo.path().toUtf8(); }, 20000));
  CustomCommandManager::shared().setCustomCommands({});
}
