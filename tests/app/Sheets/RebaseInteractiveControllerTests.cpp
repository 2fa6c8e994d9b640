// The interactive rebase sheet with real git, the real rebase editor and the session bus.
#include <QCheckBox>
#include <QDBusConnection>
#include <QDir>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "Controllers/Sheets/RebaseInteractiveController.h"
#include "Controllers/Sheets/TodoListModel.h"
#include "Jobs/JobQueue.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

using Command = InteractiveRebaseCommand;
using Action = RebaseInteractiveController::Action;

class RebaseSheetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!QDBusConnection::sessionBus().isConnected()) GTEST_SKIP() << "no session bus";
    qputenv("JELV_RI_TIMEOUT", "20");
    base = repo.commitFile("f.txt", "f\n", "base");
    a = repo.commitFile("a.txt", "a\n", "A");
    b = repo.commitFile("b.txt", "b\n", "B");
    c = repo.commitFile("c.txt", "c\n", "C");
    window.show();
  }
  void TearDown() override { qunsetenv("JELV_RI_TIMEOUT"); }

  // Opens the sheet and waits until git's list is in it.
  RebaseInteractiveController* open(std::optional<Action> action = std::nullopt) {
    sheet = new RebaseInteractiveController(repo.module(), QStringLiteral("main"), base, false, action, QString(), &window);
    sheet->setJobQueue(queue);
    ended = std::make_unique<QSignalSpy>(sheet.data(), &QDialog::finished);
    sheet->open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return sheet && sheet->state() != RebaseInteractiveController::State::loading; }, 20000));
    return sheet;
  }
  int finish() {
    EXPECT_TRUE(ended->count() > 0 || ended->wait(20000));
    return ended->isEmpty() ? 0 : ended->first().first().toInt();
  }
  std::vector<Command> commands() const {
    std::vector<Command> list;
    for (const auto& item : sheet->model()->items()) list.push_back(item.command);
    return list;
  }
  QStringList subjects() const { return repo.git({"log", "--format=%s"}).split(u'\n', Qt::SkipEmptyParts); }

  TempRepository repo;
  QString base, a, b, c;
  QMainWindow window;
  std::shared_ptr<JobQueue> queue = std::make_shared<JobQueue>();
  QPointer<RebaseInteractiveController> sheet;
  std::unique_ptr<QSignalSpy> ended;
};

TEST_F(RebaseSheetTest, QuickActionOpensWithTheChangeMadeAndSubmitRewritesWithABackup) {
  open(Action{Action::Kind::fixup, {b}});
  ASSERT_EQ(sheet->state(), RebaseInteractiveController::State::editing);
  EXPECT_EQ(commands(), (std::vector<Command>{Command::pick, Command::fixup, Command::pick}));
  EXPECT_EQ(sheet->selectedRows(), std::vector<int>{1});

  sheet->createBackupCheckBox()->setChecked(true);
  const QString head = repo.headSha();
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  EXPECT_EQ(finish(), JelvSheetController::successCode);
  EXPECT_EQ(subjects(), (QStringList{"C", "A", "base"}));
  const QStringList backups = repo.git({"branch", "--list", "backup/*", "--format=%(refname:short) %(objectname)"})
                                  .split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(backups.size(), 1);
  EXPECT_TRUE(backups.first().startsWith(QStringLiteral("backup/main-")));
  EXPECT_TRUE(backups.first().endsWith(head));  // the history before the rewrite
  EXPECT_TRUE(Preferences::shared().createInteractiveRabaseBackup());
}

// "Reword Message..." opens with the commit selected and its message ready to be typed over.
TEST_F(RebaseSheetTest, RewordQuickActionTakesTheTypedMessage) {
  open(Action{Action::Kind::reword, {a}});
  EXPECT_EQ(sheet->selectedRows(), std::vector<int>{2});
  ASSERT_EQ(sheet->focusWidget(), sheet->messageField());
  QTest::keyClicks(sheet->focusWidget(), QStringLiteral("A, said again"));
  EXPECT_EQ(commands(), (std::vector<Command>{Command::pick, Command::pick, Command::reword}));
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  EXPECT_EQ(finish(), JelvSheetController::successCode);
  EXPECT_EQ(subjects(), (QStringList{"C", "B", "A, said again", "base"}));
}

TEST_F(RebaseSheetTest, KeysReorderAndSetActionsAndTheRewordFieldGivesTheMessage) {
  open();
  QListView* list = sheet->listView();
  sheet->selectRows({2});  // A, the oldest
  QTest::keyClick(list, Qt::Key_Up, Qt::ControlModifier);
  QTest::keyClick(list, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(sheet->model()->items()[0].sha, a);
  EXPECT_EQ(sheet->selectedRows(), std::vector<int>{0});
  // The oldest row (B now) can't fold into anything.
  sheet->selectRows({2});
  QTest::keyClick(list, Qt::Key_S);
  EXPECT_EQ(sheet->model()->items()[2].command, Command::pick);
  EXPECT_FALSE(sheet->statusLabel()->isHidden());
  sheet->selectRows({1});  // C squashes into B
  QTest::keyClick(list, Qt::Key_S);
  EXPECT_EQ(sheet->model()->items()[1].command, Command::squash);
  EXPECT_TRUE(sheet->groupMessageView()->isVisibleTo(sheet));
  EXPECT_TRUE(sheet->groupMessageView()->toPlainText().contains(QStringLiteral("B\n\nC")));

  sheet->selectRows({0});
  sheet->messageField()->setPlainText(QStringLiteral("A, said again"));
  EXPECT_EQ(sheet->model()->items()[0].command, Command::reword);
  sheet->messageField()->setPlainText(QString());
  EXPECT_FALSE(sheet->submitButton()->isEnabled());  // a reword needs a message
  sheet->messageField()->setPlainText(QStringLiteral("A, said again"));
  EXPECT_TRUE(sheet->submitButton()->isEnabled());

  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  EXPECT_EQ(finish(), JelvSheetController::successCode);
  EXPECT_EQ(subjects(), (QStringList{"A, said again", "B", "base"}));
  EXPECT_EQ(repo.git({"log", "-1", "--format=%B", "HEAD~1"}).trimmed(), QStringLiteral("B\n\nC"));
}

// A drag moves rows through the model's own data; cancelled, the rebase changes nothing.
TEST_F(RebaseSheetTest, ADropMovesTheDraggedRowsAndCancelLeavesTheRepositoryAsItWas) {
  const QString head = repo.headSha();
  open(Action{Action::Kind::drop, {b, QStringLiteral("0123456789abcdef0123456789abcdef01234567")}});
  EXPECT_EQ(commands(), (std::vector<Command>{Command::pick, Command::drop, Command::pick}));  // the unknown id is skipped
  TodoListModel* model = sheet->model();
  std::unique_ptr<QMimeData> data(model->mimeData({model->index(2)}));
  // Dropped between C and B.
  model->dropMimeData(data.get(), Qt::MoveAction, 1, 0, {});
  EXPECT_EQ(model->items()[1].sha, a);
  EXPECT_EQ(model->items()[2].sha, b);
  QTest::mouseClick(sheet->cancelButton(), Qt::LeftButton);
  EXPECT_EQ(finish(), JelvSheetController::cancelCode);
  EXPECT_EQ(repo.headSha(), head);
  EXPECT_FALSE(QDir(repo.gitDir() + QStringLiteral("/rebase-merge")).exists());
}

TEST_F(RebaseSheetTest, GitRefusingToStartEndsTheSheetWithItsError) {
  repo.writeFile("a.txt", "changed\n");  // unstaged changes stop a rebase
  open();
  EXPECT_EQ(finish(), JelvSheetController::errorCode);
  EXPECT_EQ(repo.readFile("a.txt"), QByteArray("changed\n"));
}

}  // namespace
