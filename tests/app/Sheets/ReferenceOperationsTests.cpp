// The stash, tag, remote and bisect operations from the menus a user opens (the sidebar's
// entries, the local changes' file menu) and the table's entries that the toolbar and the
// Repository menu run, with their sheets and confirmations, on real repositories.
#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "Commands/CommandTable.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "UI/JelvDocument.h"
#include "Controllers/Sheets/CreateTagController.h"
#include "Controllers/Sheets/RemoteController.h"
#include "Controllers/Sheets/StashSheetController.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "support/RepositoryTab.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {

// Triggers the entry of the item's context menu; false when the menu lacks it or it is off.
bool triggerMenu(RepositorySidebar* sidebar, const QString& itemText, const QString& actionText) {
  QTreeWidgetItem* item = findItem(*sidebar, itemText);
  if (!item) return false;
  std::unique_ptr<QMenu> menu(sidebar->contextMenuFor(item));
  QAction* action = menu ? findAction(menu.get(), actionText) : nullptr;
  if (!action || !action->isEnabled()) return false;
  action->trigger();
  return true;
}

class ReferenceOperationsTest : public ::testing::Test {
 protected:
  void open() { view_ = openTab(repo_.module()); }
  // The tab with one object chosen, as a sidebar entry's menu gives it.
  CommandContext chosen() {
    CommandContext context = CommandContext::forRepository(view_.get());
    context.revisions.clear();
    return context;
  }
  // Waits until the sidebar shows `text`, or no longer shows it.
  bool sidebarShows(const QString& text, bool shown = true) {
    return QTest::qWaitFor([&] { return (findItem(*view_->sidebar(), text) != nullptr) == shown; }, 10000);
  }

  TempRepository repo_;
  std::unique_ptr<JelvDocument> view_;
};

}  // namespace

TEST_F(ReferenceOperationsTest, StashFromTheTableAndTheFileMenuThenApplyAndDeleteFromTheSidebar) {
  repo_.writeFile("a.txt", "a\n");
  repo_.writeFile("b.txt", "b\n");
  repo_.commit("Initial");
  repo_.writeFile("a.txt", "a changed\n");
  repo_.writeFile("b.txt", "b changed\n");
  open();

  // Only a.txt, from the local changes' file menu.
  StageFileViewController* changes = view_->localChangesView();
  ASSERT_TRUE(QTest::qWaitFor([&] { return changes->unstagedList()->model()->rowCount() == 2; }, 10000));
  changes->unstagedList()->setCurrentIndex(changes->unstagedList()->model()->index(0, 0));
  std::unique_ptr<QMenu> fileMenu(changes->contextMenu(changes->unstagedList()));
  QAction* stashSelected = findAction(fileMenu.get(), "Stash Selected Files...");
  ASSERT_TRUE(stashSelected);
  stashSelected->trigger();
  auto* partial = openSheet<StashSheetController>(view_.get());
  ASSERT_TRUE(partial);
  EXPECT_FALSE(partial->stageNewFilesBox());
  partial->messageField()->setText(QStringLiteral("only a"));
  partial->submitButton()->click();
  ASSERT_TRUE(sidebarShows("On main: only a"));
  EXPECT_EQ(repo_.readFile("a.txt"), "a\n");
  EXPECT_EQ(repo_.readFile("b.txt"), "b changed\n");

  // The rest through the toolbar's entry.
  ASSERT_TRUE(CommandTable::run("saveStash", CommandContext::forRepository(view_.get())));
  auto* sheet = openSheet<StashSheetController>(view_.get());
  ASSERT_TRUE(sheet);
  sheet->messageField()->setText(QStringLiteral("the rest"));
  sheet->submitButton()->click();
  ASSERT_TRUE(sidebarShows("On main: the rest"));
  EXPECT_EQ(repo_.git({"status", "--porcelain"}), QString());

  // From the sidebar: pop the older one back, then delete the other after confirming.
  ASSERT_TRUE(triggerMenu(view_->sidebar(), "On main: only a", "Pop Stash"));
  ASSERT_TRUE(sidebarShows("On main: only a", false));
  EXPECT_EQ(repo_.readFile("a.txt"), "a changed\n");
  ASSERT_TRUE(triggerMenu(view_->sidebar(), "On main: the rest", "Delete Stash..."));
  ASSERT_TRUE(confirm(view_.get()));
  ASSERT_TRUE(sidebarShows("On main: the rest", false));
}

TEST_F(ReferenceOperationsTest, TagAtAChosenCommitAndARemoteAddedAndRemoved) {
  const QString first = repo_.commitFile("a.txt", "1\n", "First");
  repo_.commitFile("a.txt", "2\n", "Second");
  open();

  CommandContext atFirst = chosen();
  atFirst.revisions = {view_->controller()->repositoryData()->revisions->back()};
  ASSERT_TRUE(CommandTable::run("createTagHere", atFirst));
  auto* tagSheet = openSheet<CreateTagController>(view_.get());
  ASSERT_TRUE(tagSheet);
  tagSheet->nameField()->setText(QStringLiteral("v1.0"));
  tagSheet->messageField()->setPlainText(QStringLiteral("First release\nwith notes"));
  // The name is taken as typed; an existing one would be refused here.
  EXPECT_TRUE(tagSheet->submitButton()->isEnabled());
  tagSheet->submitButton()->click();
  ASSERT_TRUE(sidebarShows("v1.0"));
  EXPECT_EQ(repo_.git({"tag", "-l", "--format=%(contents)", "v1.0"}).trimmed(), QStringLiteral("First release\nwith notes"));
  EXPECT_EQ(repo_.git({"rev-parse", "v1.0^{commit}"}).trimmed(), first);

  ASSERT_TRUE(triggerMenu(view_->sidebar(), "Remotes", "Add Remote..."));
  auto* remoteSheet = openSheet<RemoteController>(view_.get());
  ASSERT_TRUE(remoteSheet);
  remoteSheet->nameField()->setText(QStringLiteral("backup"));
  EXPECT_FALSE(remoteSheet->submitButton()->isEnabled());  // no URL yet
  remoteSheet->urlField()->setText(repo_.path() + QStringLiteral("/../elsewhere.git"));
  remoteSheet->noImplicitFetchBox()->setChecked(true);
  remoteSheet->submitButton()->click();
  // Listed although nothing has been fetched from it.
  ASSERT_TRUE(sidebarShows("backup"));
  EXPECT_EQ(repo_.git({"config", "remote.backup.disableimplicitfetch"}).trimmed(), QStringLiteral("true"));

  ASSERT_TRUE(triggerMenu(view_->sidebar(), "backup", "Remove Remote..."));
  ASSERT_TRUE(confirm(view_.get()));
  ASSERT_TRUE(sidebarShows("backup", false));
}

TEST_F(ReferenceOperationsTest, BisectStepsFindAndSelectTheFirstBadCommit) {
  QStringList shas;
  for (int i = 0; i < 8; ++i) shas << repo_.commitFile("value.txt", i >= 3 ? "broken\n" : QByteArray::number(i) + "\n", QStringLiteral("Commit %1").arg(i));
  open();

  // Marks are offered only while a bisect is under way.
  EXPECT_FALSE(CommandTable::run("bisectGood", chosen()));
  EXPECT_FALSE(CommandTable::run("bisectReset", chosen()));

  ASSERT_TRUE(CommandTable::run("bisectStart", chosen()));
  ASSERT_TRUE(QTest::qWaitFor([&] { return view_->controller()->repositoryStatus()->repositoryState.is<RepositoryState::BisectInProgress>(); }, 10000));
  ASSERT_TRUE(CommandTable::run("bisectBad", chosen()));  // the checked-out commit
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(repo_.gitDir() + "/refs/bisect/bad"); }, 10000));
  // The oldest commit, chosen in the list, is good.
  ASSERT_TRUE(view_->commitList()->selectSha(*Sha::fromHex(shas.front())));
  ASSERT_TRUE(CommandTable::run("bisectGood", CommandContext::forRepository(view_.get())));

  QMessageBox* result = nullptr;
  QString tested = repo_.headSha();
  for (int step = 0; step < 6; ++step) {
    // Each mark makes git check out the next commit to test.
    ASSERT_TRUE(QTest::qWaitFor([&] {
      result = view_->findChild<QMessageBox*>(QStringLiteral("bisectResult"));
      return result || repo_.headSha() != tested;
    }, 10000));
    if (result) break;
    tested = repo_.headSha();
    const bool bad = repo_.readFile("value.txt") == "broken\n";
    ASSERT_TRUE(CommandTable::run(bad ? QStringLiteral("bisectBad") : QStringLiteral("bisectGood"), chosen()));
  }
  ASSERT_TRUE(result) << "no result after six steps";
  EXPECT_TRUE(result->text().startsWith(shas[3].left(10))) << result->text().toStdString();
  ASSERT_TRUE(view_->commitList()->currentRevision());
  EXPECT_EQ(view_->commitList()->currentRevision()->sha().toString(), shas[3]);

  ASSERT_TRUE(CommandTable::run("bisectReset", chosen()));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(repo_.gitDir() + "/BISECT_START"); }, 10000));
  EXPECT_EQ(repo_.headSha(), shas.back());
}
