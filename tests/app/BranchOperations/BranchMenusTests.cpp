#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "Commands/CommandContext.h"
#include "Commands/CommandTable.h"
#include "Commands/ContextMenus.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Repository/NotificationBar.h"
#include "UI/JelvDocument.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/GitOutputView.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Repository/RepositoryController.h"
#include "support/RepositoryTab.h"
#include "support/TempRepository.h"

namespace {

QString q(const char* text) { return QString::fromUtf8(text); }

// Waits until the repository has read everything again after an operation.
bool settle(JelvDocument& view, const std::function<bool()>& done) {
  return QTest::qWaitFor([&] { return !view.controller()->isRefreshing() && done(); }, 20000);
}

class BranchMenus : public ::testing::Test {
 protected:
  void SetUp() override {
    repo.commitFile(q("file.txt"), "one\ntwo\n", q("base"));
    repo.git({q("checkout"), q("-q"), q("-b"), q("topic")});
    repo.commitFile(q("file.txt"), "one\nTOPIC\n", q("topic change"));
    repo.git({q("checkout"), q("-q"), q("main")});
    repo.commitFile(q("file.txt"), "one\nMAIN\n", q("main change"));
    view = openTab(repo.module());
  }

  TempRepository repo;
  std::unique_ptr<JelvDocument> view;
};

}  // namespace

// The branch's menu in the sidebar opens the merge sheet for it; the conflict stops the
// merge, the bar offers Resolve, Continue and Abort, and Abort (after asking) undoes it.
// Still not merged, the branch's deletion asks twice: the second time saying what is lost.
TEST_F(BranchMenus, MergeFromTheSidebarThenAbortFromTheBarThenDeleteTheBranch) {
  QTreeWidgetItem* topic = sidebarItem(view->sidebar(), q("refs/heads/topic"));
  ASSERT_TRUE(topic);
  std::unique_ptr<QMenu> menu(view->sidebar()->contextMenuFor(topic));
  ASSERT_TRUE(menu);
  QAction* merge = menu->findChild<QAction*>(q("mergeIntoCurrent"));
  ASSERT_TRUE(merge && merge->isEnabled());
  merge->trigger();

  auto* sheet = openSheet<OperationSheetController>(view.get());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->choice(0)->currentText(), q("topic"));
  sheet->submitButton()->click();
  // The failure reaches the error sheet with git's words, the state the notification bar.
  auto* error = openSheet<ErrorWindowController>(view.get());
  ASSERT_TRUE(error);
  EXPECT_TRUE(error->errorTextView()->toPlainText().contains(q("CONFLICT")));
  error->submitButton()->click();
  ASSERT_TRUE(settle(*view, [&] { return view->notificationBar()->actionButtons().size() == 3; }));
  QStringList titles;
  for (QPushButton* button : view->notificationBar()->actionButtons()) titles << button->text();
  EXPECT_EQ(titles, (QStringList{q("Resolve"), q("Continue"), q("Abort...")}));

  view->notificationBar()->actionButtons().at(2)->click();
  auto* question = openSheet<QMessageBox>(view.get());
  ASSERT_TRUE(question);
  EXPECT_TRUE(question->text().contains(q("lost")));
  question->findChild<QPushButton*>(q("confirmButton"))->click();
  ASSERT_TRUE(settle(*view, [&] { return view->notificationBar()->isHidden(); }));
  EXPECT_EQ(repo.readFile(q("file.txt")), QByteArray("one\nMAIN\n"));

  menu.reset(view->sidebar()->contextMenuFor(sidebarItem(view->sidebar(), q("refs/heads/topic"))));
  menu->findChild<QAction*>(q("deleteBranch"))->trigger();
  ASSERT_TRUE(confirm(view.get()));
  QMessageBox* second = nullptr;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    second = openSheet<QMessageBox>(view.get());
    return second && second->text().contains(q("not fully merged"));
  }, 20000));
  EXPECT_TRUE(second->text().contains(q("will be lost")));
  EXPECT_TRUE(repo.git({q("branch"), q("--list"), q("topic")}).contains(q("topic")));
  second->findChild<QPushButton*>(q("confirmButton"))->click();
  ASSERT_TRUE(settle(*view, [&] { return !repo.git({q("branch"), q("--list"), q("topic")}).contains(q("topic")); }));
}

// Double-click checks a branch out; the commit list's menu offers the operations on the
// selected commit, and Continue commits a merge whose conflicts were resolved outside.
TEST_F(BranchMenus, DoubleClickChecksOutAndContinueFinishesAResolvedMerge) {
  QTreeWidgetItem* topic = sidebarItem(view->sidebar(), q("refs/heads/topic"));
  ASSERT_TRUE(topic);
  Q_EMIT view->sidebar()->itemDoubleClicked(topic, 0);
  ASSERT_TRUE(settle(*view, [&] { return repo.git({q("branch"), q("--show-current")}).trimmed() == q("topic"); }));

  repo.git({q("merge"), q("main")}, true);
  repo.writeFile(q("file.txt"), "one\nBOTH\n");
  repo.stageAll();
  view->refresh();
  ASSERT_TRUE(settle(*view, [&] {
    const auto buttons = view->notificationBar()->actionButtons();
    return !buttons.isEmpty() && buttons.first()->text() == q("Continue");
  }));
  view->notificationBar()->actionButtons().first()->click();
  ASSERT_TRUE(settle(*view, [&] { return view->notificationBar()->isHidden(); }));
  EXPECT_EQ(repo.git({q("rev-list"), q("--parents"), q("-n1"), q("HEAD")}).split(' ').size(), 3);

  QMenu menu;
  CommandTable::addActions(&menu, ContextMenus::revision(), CommandContext::forRepository(view.get()));
  for (const char* name : {"copySha", "cherryPick", "revert", "resetHard", "checkoutRevision"}) {
    QAction* action = menu.findChild<QAction*>(q(name));
    ASSERT_TRUE(action) << name;
    EXPECT_TRUE(action->isEnabled()) << name;
  }
}

// The reset sheet opened for a mixed reset and switched to hard shows the warning and the
// longer button title whole: the sheet grows with its content.
TEST_F(BranchMenus, TheResetSheetGrowsToShowTheHardWarning) {
  ASSERT_TRUE(view->commitList()->selectSha(*Sha::fromHex(repo.git({q("rev-parse"), q("HEAD~1")}).trimmed())));
  ASSERT_TRUE(CommandTable::run(q("resetMixed"), CommandContext::forRepository(view.get())));
  auto* sheet = openSheet<OperationSheetController>(view.get());
  ASSERT_TRUE(sheet);
  sheet->choice(0)->setCurrentIndex(2);
  QTest::qWait(50);
  QLabel* warning = sheet->statusLabel();
  ASSERT_TRUE(warning->isVisible());
  EXPECT_TRUE(warning->text().contains(q("lost")));
  EXPECT_TRUE(warning->wordWrap() ? warning->height() >= warning->heightForWidth(warning->width())
                                  : warning->width() >= warning->minimumSizeHint().width());
  QPushButton* submit = sheet->submitButton();
  EXPECT_GE(submit->width(), submit->sizeHint().width()) << submit->text().toStdString();
  for (QWidget* part : std::initializer_list<QWidget*>{warning, submit, sheet->cancelButton()}) {
    EXPECT_TRUE(sheet->rect().contains(QRect(part->mapTo(sheet, QPoint(0, 0)), part->size())));
  }
  sheet->cancelButton()->click();
}
