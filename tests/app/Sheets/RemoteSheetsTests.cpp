// The fetch, push, error and password sheets against a real HTTP server.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDBusConnection>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "Commands/CommandFlow.h"
#include "Commands/CommandTable.h"
#include "Commands/ContextMenus.h"
#include "Commands/ShowAskPassSheetCommand.h"
#include "Commands/ShowFetchSheetCommand.h"
#include "Commands/ShowPullSheetCommand.h"
#include "Commands/ShowPushSheetCommand.h"
#include "Controllers/Sheets/CloneController.h"
#include "Controllers/Sheets/PullWindowController.h"
#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "UI/JelvDocument.h"
#include "Controls/SpellChecking/SpellCheckedLineEdit.h"
#include "Controllers/Sheets/AskPassController.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/GitOutputView.h"
#include "Controllers/Sheets/FetchWindowController.h"
#include "Controllers/Sheets/PushMultipleBranchesWindowController.h"
#include "Controllers/Sheets/PushWindowController.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Git/Commands/Remotes/FetchGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "Services/Preferences.h"
#include "UI/Appearance.h"
#include "support/RepositoryTab.h"
#include "support/GitHttpServer.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {

// With JELV_SCREENSHOT_DIR set, the sheet is saved there as a picture for the README,
// once light ("name.png") and once dark ("name-dark.png").
void screenshotBoth(QWidget* sheet, const QString& name) {
  const QString dir = qEnvironmentVariable("JELV_SCREENSHOT_DIR");
  auto* app = qobject_cast<QApplication*>(QCoreApplication::instance());
  if (dir.isEmpty() || !sheet || !app) return;
  const QString base = dir + QLatin1Char('/') + name.chopped(int(qstrlen(".png")));
  Appearance::apply(*app, 1);
  QCoreApplication::processEvents();
  sheet->grab().save(base + QStringLiteral(".png"));
  Appearance::apply(*app, 2);
  QCoreApplication::processEvents();
  sheet->grab().save(base + QStringLiteral("-dark.png"));
  Appearance::apply(*app, 1);
}

class RemoteSheets : public ::testing::Test {
 protected:
  void SetUp() override {
    QString why;
    ASSERT_TRUE(server.start(&why)) << why.toStdString();
    server.createBareRepository(QStringLiteral("project.git"));
    upstream.git({"remote", "add", "origin", server.url("project.git", true)});
    upstream.commitFile("a.txt", "one\n", "first");
    upstream.git({"tag", "v1"});
    upstream.git({"push", "-q", "origin", "main", "v1"});
    runProgram(QStringLiteral("git"), {QStringLiteral("clone"), QStringLiteral("-q"), server.url(QStringLiteral("project.git"), true), local.path()});
    view = openTab(local.module(), queue);
  }
  void TearDown() override {
    queue->cancelAllTasks();
    view.reset();
  }

  QString localSha(const QString& ref) {
    int status = 0;
    const QString sha = local.git({"rev-parse", "-q", "--verify", ref}, true, &status).trimmed();
    return status == 0 ? sha : QString();
  }
  CommandContext context() { return CommandContext::forRepository(view.get()); }
  bool hasJob(const QString& name) const {
    for (const auto& job : queue->userJobs()) {
      if (job->name() == name) return true;
    }
    return false;
  }
  // The sha of a reference in the server's repository; empty when it has none.
  QString serverSha(const QString& ref) const {
    int status = 0;
    const QByteArray sha = runProgram(QStringLiteral("git"), {QStringLiteral("--git-dir"), server.root() + QStringLiteral("/project.git"),
                                                              QStringLiteral("rev-parse"), QStringLiteral("-q"), QStringLiteral("--verify"), ref},
                                      {}, &status);
    return status == 0 ? QString::fromUtf8(sha).trimmed() : QString();
  }

  GitHttpServer server;
  TempRepository upstream;
  TempRepository local{false, QStringLiteral("local")};
  std::shared_ptr<JobQueue> queue = std::make_shared<JobQueue>();
  std::unique_ptr<JelvDocument> view;
};

}  // namespace

// The fetch sheet remembers its options; the quick fetch asks for the password the URL
// lacks through the helper's sheet, and its answer reaches git.
TEST_F(RemoteSheets, FetchSheetRemembersItsOptionsAndQuickFetchAsksForThePassword) {
  if (!QDBusConnection::sessionBus().isConnected()) GTEST_SKIP() << "no session bus";
  Preferences::shared().setFetchSheetFetchAllTags(false);
  const QString second = upstream.commitFile("b.txt", "two\n", "second");
  upstream.git({"tag", "v2"});
  upstream.git({"push", "-q", "origin", "main", "v2"});
  ShowFetchSheetCommand::execute(context());
  auto* sheet = openSheet<FetchWindowController>(view->window());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->remoteList()->currentText(), QStringLiteral("origin"));
  sheet->tagsBox()->setChecked(true);
  screenshotBoth(sheet, QStringLiteral("fetch-sheet.png"));
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  EXPECT_TRUE(Preferences::shared().fetchSheetFetchAllTags());
  EXPECT_TRUE(QTest::qWaitFor([&] { return localSha("v2") == second; }, 20000));
  // The job is in the history, named after its remote.
  EXPECT_TRUE(hasJob("Fetch 'origin'"));

  local.git({"remote", "set-url", "origin", QStringLiteral("http://alice@127.0.0.1:%1/project.git").arg(server.port())});
  AskPassBridge bridge;
  ASSERT_TRUE(bridge.listen());
  ShowAskPassSheetCommand command(bridge);
  bridge.setPromptHandler([&](const AskPassRequestArgs& args, const AskPassRequest& request) { command.execute(view->window(), args, request); });
  const QString third = upstream.commitFile("c.txt", "three\n", "third");
  upstream.git({"push", "-q", "origin", "main"});
  ASSERT_TRUE(CommandTable::run("quickFetch", context()));
  auto* password = openSheet<AskPassController>(view->window());
  ASSERT_TRUE(password);
  EXPECT_TRUE(password->messageLabel()->text().startsWith(QStringLiteral("Password for 'http://alice@127.0.0.1:")));
  EXPECT_TRUE(password->secureInputField()->isVisible());
  EXPECT_TRUE(password->rememberInKeychainCheckBox()->isVisible());
  QTest::keyClicks(password->secureInputField(), server.password());
  screenshotBoth(password, QStringLiteral("password-sheet.png"));
  QTest::mouseClick(password->submitButton(), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return localSha("origin/main") == third; }, 20000));
}

TEST_F(RemoteSheets, PushSheetPushesToANewBranchByName) {
  const QString mine = local.commitFile("mine.txt", "mine\n", "mine");
  ShowPushSheetCommand::execute(context());
  auto* sheet = openSheet<PushWindowController>(view->window());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->localBranchList()->currentText(), QStringLiteral("main"));
  EXPECT_EQ(sheet->remoteBranchList()->currentText(), QStringLiteral("main"));
  sheet->remoteBranchList()->setEditText(QStringLiteral("bad..name"));
  EXPECT_FALSE(sheet->submitButton()->isEnabled());
  sheet->remoteBranchList()->setEditText(QStringLiteral("review/mine"));
  ASSERT_TRUE(sheet->submitButton()->isEnabled());
  screenshotBoth(sheet, QStringLiteral("push-sheet.png"));
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return serverSha("refs/heads/review/mine") == mine; }, 20000));
  EXPECT_TRUE(hasJob("Push 'main' to 'origin'"));
}

TEST_F(RemoteSheets, PushBranchesSheetPushesTheSidebarSelection) {
  const QString feature = QStringLiteral("feature/a");
  const QString accented = QStringLiteral("fix-\u00fcml");
  local.git({"branch", feature});
  local.git({"checkout", "-q", "-b", accented});
  local.commitFile("fix.txt", "fix\n", "fix");
  local.git({"checkout", "-q", "main"});
  view->refresh();
  RepositorySidebar* sidebar = view->sidebar();
  const auto item = [&](const QString& name) { return sidebarItem(sidebar, QStringLiteral("refs/heads/") + name); };
  ASSERT_TRUE(QTest::qWaitFor([&] { return item(feature) && item(accented); }, 20000));
  sidebar->clearSelection();
  item(feature)->setSelected(true);
  item(accented)->setSelected(true);
  // The right click on one of the two acts on both.
  ASSERT_TRUE(ContextMenus::forSidebarItem(item(accented)).contains(QStringLiteral("pushBranches")));
  ASSERT_TRUE(CommandTable::run("pushBranches", ContextMenus::contextForSidebarItem(view.get(), item(accented))));
  auto* sheet = openSheet<PushMultipleBranchesWindowController>(view->window());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->remote(), QStringLiteral("origin"));
  QStringList checked = sheet->fullReferences();
  checked.sort();
  EXPECT_EQ(checked, QStringList({"refs/heads/" + feature, "refs/heads/" + accented}));
  const auto row = [&](const QString& name) {
    return sheet->branchList()->findItems(name, Qt::MatchExactly).value(0);
  };
  ASSERT_TRUE(row(QStringLiteral("main")) && row(feature) && row(accented));
  EXPECT_EQ(row(QStringLiteral("main"))->text(1), QStringLiteral("up to date"));
  EXPECT_EQ(row(feature)->text(1), QStringLiteral("new branch"));
  // Nothing checked, nothing to push.
  row(feature)->setCheckState(0, Qt::Unchecked);
  row(accented)->setCheckState(0, Qt::Unchecked);
  EXPECT_FALSE(sheet->submitButton()->isEnabled());
  row(feature)->setCheckState(0, Qt::Checked);
  row(accented)->setCheckState(0, Qt::Checked);
  ASSERT_TRUE(sheet->submitButton()->isEnabled());
  screenshotBoth(sheet, QStringLiteral("push-branches-sheet.png"));
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  // Both reach the server and track what they were pushed to (git writes that last).
  const auto upstreamOf = [&](const QString& branch) {
    int status = 0;
    return local.git({"config", QStringLiteral("branch.%1.merge").arg(branch)}, true, &status).trimmed();
  };
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return upstreamOf(feature) == QStringLiteral("refs/heads/") + feature && upstreamOf(accented) == QStringLiteral("refs/heads/") + accented;
  }, 20000));
  EXPECT_EQ(serverSha(QStringLiteral("refs/heads/") + feature), localSha(feature));
  EXPECT_EQ(serverSha(QStringLiteral("refs/heads/") + accented), localSha(accented));
  EXPECT_TRUE(hasJob("Push 2 branches to 'origin'"));
}

// A tag moved on the server stops the fetch. The error sheet's Force Fetch repairs it; a
// repair that fails (the remote gone meanwhile) says why in a sheet of its own, without
// offering the same repair again.
TEST_F(RemoteSheets, ForceFetchRepairsAMovedTagAndAFailedOneShowsItsOwnError) {
  upstream.commitFile("b.txt", "two\n", "second");
  upstream.git({"tag", "-f", "v1"});
  upstream.git({"push", "-q", "-f", "origin", "main", "v1"});
  JobProgress progress;
  const GitVoidResult failed = FetchGitCommand::execute(local.module(), FetchTarget::ofRemote(QStringLiteral("origin")), {false, true, false, false}, progress);
  ASSERT_TRUE(failed.isError<Error::TagMismatch>());

  local.git({"remote", "set-url", "origin", "http://127.0.0.1:9/gone.git"});
  CommandFlow::showError(context(), failed.error());
  auto* first = openSheet<ErrorWindowController>(view->window());
  ASSERT_TRUE(first);
  ASSERT_TRUE(first->firstButton()->isVisible());
  EXPECT_EQ(first->firstButton()->text(), QStringLiteral("Force Fetch"));
  QTest::mouseClick(first->firstButton(), Qt::LeftButton);
  ErrorWindowController* second = nullptr;
  ASSERT_TRUE(QTest::qWaitFor([&] { return (second = openSheet<ErrorWindowController>(view->window())) != first; }, 20000));
  ASSERT_TRUE(second->errorResult().has_value());
  EXPECT_TRUE(std::holds_alternative<Error::GitUnknownError>(*second->errorResult()));
  EXPECT_TRUE(second->errorTextView()->toPlainText().contains(QStringLiteral("127.0.0.1"))) << second->errorTextView()->toPlainText().toStdString();
  EXPECT_FALSE(second->firstButton()->isVisible());
  second->cancel();

  local.git({"remote", "set-url", "origin", server.url(QStringLiteral("project.git"), true)});
  ErrorWindowController* sheet = ErrorWindowController::present(view.get(), local.module(), failed.error(), queue);
  std::optional<JelvSheetResult> result;
  QObject::connect(sheet, &QDialog::finished, [&](int) { result = sheet->result(); });
  QTest::mouseClick(sheet->firstButton(), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 20000));
  EXPECT_TRUE(result->isSuccess());
  EXPECT_EQ(localSha(QStringLiteral("v1")), upstream.headSha());
}

TEST_F(RemoteSheets, PullSheetKeepsLocalChangesOfAMergePull) {
  const QString second = upstream.commitFile("b.txt", "two\n", "second");
  upstream.git({"push", "-q", "origin", "main"});
  local.writeFile("a.txt", "mine\n");
  ASSERT_TRUE(CommandTable::run("fetch", context()));
  auto* fetch = openSheet<FetchWindowController>(view->window());
  ASSERT_TRUE(fetch);
  QTest::mouseClick(fetch->submitButton(), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return view->controller()->repositoryData()->references.remoteBranches.size() >= 1 &&
                                           localSha("origin/main") == second && !view->controller()->isRefreshing(); }, 20000));
  ShowPullSheetCommand::execute(context());
  auto* sheet = openSheet<PullWindowController>(view->window());
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->remoteList()->currentText(), QStringLiteral("origin"));
  EXPECT_EQ(sheet->branchList()->currentText(), QStringLiteral("main"));
  sheet->rebaseBox()->setChecked(false);
  sheet->stashBox()->setChecked(true);
  screenshotBoth(sheet, QStringLiteral("pull-sheet.png"));
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return local.headSha() == second && local.readFile("a.txt") == "mine\n"; }, 20000));
  EXPECT_TRUE(Preferences::shared().pullSheetStashAndReapply());
  EXPECT_TRUE(hasJob("Pull 'origin/main'"));
}

TEST_F(RemoteSheets, CloneSheetClonesIntoANewFolder) {
  TempRepository place(false, QStringLiteral("place"));
  QDir().mkpath(place.path());
  Preferences::shared().setRecentCloneDirectories({place.path()});
  auto* sheet = new CloneController(server.url(QStringLiteral("project.git"), true));
  sheet->setJobQueue(queue);
  std::optional<JelvSheetResult> result;
  JelvSheetController::showSheet(view.get(), sheet, [&](const JelvSheetResult& r) { result = r; });
  EXPECT_EQ(sheet->destinationPath(), place.path() + QStringLiteral("/project"));
  ASSERT_TRUE(sheet->submitButton()->isEnabled());
  // The picture shows no password.
  sheet->urlField()->setText(server.url(QStringLiteral("project.git")));
  screenshotBoth(sheet, QStringLiteral("clone-sheet.png"));
  sheet->urlField()->setText(server.url(QStringLiteral("project.git"), true));
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 30000));
  EXPECT_TRUE(result->isSuccess());
  EXPECT_TRUE(QFileInfo::exists(place.path() + QStringLiteral("/project/a.txt")));
  // The folder exists now and is not empty: the same clone is refused before it runs.
  auto* again = new CloneController(server.url(QStringLiteral("project.git"), true));
  again->setJobQueue(queue);
  JelvSheetController::showSheet(view.get(), again, nullptr);
  EXPECT_FALSE(again->submitButton()->isEnabled());
  again->cancel();
}

TEST_F(RemoteSheets, CommitAndPushFollowsThePreferenceAndTheAltKey) {
  local.writeFile("new.txt", "new\n");
  local.git({"add", "new.txt"});
  view->controller()->refresh();
  CommitController* box = view->localChangesView()->commitBox();
  QPushButton* button = box->commitButton();
  const auto waitForTitle = [&](const QString& title) {
    return QTest::qWaitFor([&] { return button->text() == title; }, 20000);
  };
  ASSERT_TRUE(waitForTitle(QStringLiteral("Commit 1 File"))) << button->text().toStdString();
  // Held anywhere in the window, Alt offers the push; let go, it is gone again.
  QTest::keyPress(view->sidebar(), Qt::Key_Alt);
  EXPECT_EQ(button->text(), QStringLiteral("Commit 1 File and Push"));
  QTest::keyRelease(view->sidebar(), Qt::Key_Alt, Qt::AltModifier);
  EXPECT_EQ(button->text(), QStringLiteral("Commit 1 File"));
  Preferences::shared().setPushAutomacicallyOnCommit(true);
  EXPECT_EQ(button->text(), QStringLiteral("Commit 1 File and Push"));
  Preferences::shared().setPushAutomacicallyOnCommit(false);
  EXPECT_EQ(button->text(), QStringLiteral("Commit 1 File"));

  box->subjectField()->setText(QStringLiteral("Pushed with the commit"));
  ASSERT_TRUE(button->isEnabled());
  QTest::keyPress(box->subjectField(), Qt::Key_Alt);
  QTest::mouseClick(button, Qt::LeftButton, Qt::AltModifier);
  QTest::keyRelease(box->subjectField(), Qt::Key_Alt, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return serverSha("refs/heads/main") == localSha("main") &&
                                           local.git({"log", "-1", "--format=%s"}).trimmed() ==
                                               QStringLiteral("Pushed with the commit"); }, 20000));
}
