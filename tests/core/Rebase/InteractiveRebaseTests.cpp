// Real interactive rebases: git runs the real rebase editor, which reaches this test over
// the session bus; the test answers the todo list as the sheet would.
#include <QDBusConnection>
#include <QDir>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include "Git/Commands/Merge/OperationControlGitCommand.h"
#include "Git/Commands/Repository/ContinueRebaseGitCommand.h"
#include "Git/Commands/Repository/InteractiveRebaseGitCommand.h"
#include "Git/Commands/Repository/RebaseTodoListGitCommand.h"
#include "Models/RebaseTodoList.h"
#include "Services/DistributedNotificationCenter.h"
#include "core/Commit/SigningKey.h"
#include "support/ServingEvents.h"
#include "support/TempRepository.h"

namespace {

namespace names = DistributedNotificationNames;
using Command = InteractiveRebaseCommand;
using Edit = std::function<void(std::vector<TodoListItem>&)>;

// Answers the todo request of one repository: edits the list and finishes, or cancels.
class TodoAnswer {
 public:
  TodoAnswer(GitModule module, Edit edit, bool cancel = false) : observer_({names::editTodoListForRebase()}) {
    QObject::connect(&observer_, &DistributedNotificationObserver::received, &observer_,
                     [this, module, edit, cancel](const QString&, const QString& path) {
                       if (!RebaseTodoListGitCommand::belongsTo(module, path)) return;
                       auto list = RebaseTodoListGitCommand::read(module, path);
                       if (list && !cancel) {
                         received = list.value();
                         if (edit) edit(list.value());
                         RebaseTodoList::normalize(list.value());
                         if (RebaseTodoListGitCommand::write(path, list.value())) {
                           DistributedNotificationCenter::post(names::rebaseEditorFinish(), path);
                           return;
                         }
                       }
                       DistributedNotificationCenter::post(names::rebaseEditorCancel(), path);
                     });
  }
  std::vector<TodoListItem> received;

 private:
  DistributedNotificationObserver observer_;
};

// Runs `work` (which blocks in git) while this thread hears the bus.
GitVoidResult serveWhile(const std::function<GitVoidResult()>& work) {
  GitVoidResult result = Error::Unknown{};
  EXPECT_TRUE(runServingEvents([&] { result = work(); })) << "git did not end";
  return result;
}

class InteractiveRebaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!QDBusConnection::sessionBus().isConnected()) GTEST_SKIP() << "no session bus";
    // A lost answer must fail the test, not hang it.
    qputenv("JELV_RI_TIMEOUT", "20");
    base = repo.commitFile("f.txt", "zero\n", "base");
    a = repo.commitFile("a.txt", "a\n", "A");
    b = repo.commitFile("b.txt", "b\n", "B");
    c = repo.commitFile("c.txt", "c\n", "C");
  }
  void TearDown() override { qunsetenv("JELV_RI_TIMEOUT"); }

  GitVoidResult rebase(const Edit& edit, InteractiveRebaseGitCommand::Options options = {}, bool cancel = false) {
    if (!options.root && !options.destination) options.destination = base;
    TodoAnswer answer(repo.module(), edit, cancel);
    const GitModule module = repo.module();
    GitVoidResult result = serveWhile([&] { return InteractiveRebaseGitCommand::execute(module, options); });
    received = answer.received;
    return result;
  }
  GitVoidResult continueRebase() {
    const GitModule module = repo.module();
    return serveWhile([&] { return ContinueRebaseGitCommand::execute(module); });
  }
  // The road of the notification bar's and the menu's Continue.
  GitVoidResult continueOperation() {
    const GitModule module = repo.module();
    return serveWhile([&] {
      return OperationControlGitCommand::execute(module, OperationControlGitCommand::Operation::rebase,
                                                 OperationControlGitCommand::Action::continueOperation);
    });
  }
  QStringList subjects() const { return repo.git({"log", "--format=%s"}).split(u'\n', Qt::SkipEmptyParts); }
  QString message(const QString& revision) const { return repo.git({"log", "-1", "--format=%B", revision}).trimmed(); }
  QStringList files() const { return repo.git({"ls-files"}).split(u'\n', Qt::SkipEmptyParts); }
  bool rebasing() const { return QDir(repo.gitDir() + "/rebase-merge").exists(); }

  TempRepository repo;
  QString base, a, b, c;
  std::vector<TodoListItem> received;
};

TEST_F(InteractiveRebaseTest, RewritesHistoryAsTheListSays) {
  struct Case {
    const char* name;
    Edit edit;  // rows newest first: C, B, A
    QStringList subjects;
    QString messageOfSecond;  // HEAD~1
    QStringList files;
  };
  const QStringList all{"a.txt", "b.txt", "c.txt", "f.txt"};
  const Case cases[] = {
      {"reorder", [](auto& l) { RebaseTodoList::move(l, {2}, 0); }, {"A", "C", "B", "base"}, "C", all},
      {"squash", [](auto& l) { l[1].command = Command::squash; }, {"C", "A", "base"}, "A\n\nB", all},
      {"fixup", [](auto& l) { l[1].command = Command::fixup; }, {"C", "A", "base"}, "A", all},
      {"reword", [](auto& l) { l[1].command = Command::reword; l[1].customMessage = "B again\n\nwith a body"; },
       {"C", "B again", "A", "base"}, "B again\n\nwith a body", all},
      {"drop", [](auto& l) { l[1].command = Command::drop; }, {"C", "A", "base"}, "A",
       {"a.txt", "c.txt", "f.txt"}},
      // git asks for the group's message at its last row, a fixup here.
      {"squash and fixup into one", [](auto& l) { l[0].command = Command::squash; l[1].command = Command::fixup; },
       {"A", "base"}, "base", all},
  };
  const QString start = repo.headSha();
  for (const Case& c : cases) {
    repo.git({"reset", "-q", "--hard", start});
    const GitVoidResult result = rebase(c.edit);
    ASSERT_TRUE(result.isSuccess()) << c.name << ": " << describe(result.error()).toStdString();
    EXPECT_EQ(subjects(), c.subjects) << c.name;
    EXPECT_EQ(message("HEAD~1"), c.messageOfSecond) << c.name;
    EXPECT_EQ(files(), c.files) << c.name;
    EXPECT_FALSE(rebasing()) << c.name;
  }
  EXPECT_EQ(message("HEAD"), "A\n\nC");
}

TEST_F(InteractiveRebaseTest, TheListArrivesNewestFirstWithDetails) {
  ASSERT_TRUE(rebase({}).isSuccess());
  ASSERT_EQ(received.size(), 3u);
  EXPECT_EQ(received[0].sha, c);
  EXPECT_EQ(received[2].sha, a);
  EXPECT_EQ(received[1].originalMessage.trimmed(), "B");
  EXPECT_FALSE(received[1].author.isEmpty());
  EXPECT_TRUE(received[1].authorDate.isValid());
  EXPECT_EQ(repo.headSha(), c);  // nothing changed: every pick stays
}

TEST_F(InteractiveRebaseTest, ACancelOrNoAnswerAtTheTodoStageLeavesEverythingAsItWas) {
  const QString head = repo.headSha();
  EXPECT_TRUE(rebase([](auto& l) { l[1].command = Command::drop; }, {}, true).isFailure());
  EXPECT_EQ(repo.headSha(), head);
  EXPECT_FALSE(rebasing());
  EXPECT_TRUE(repo.git({"status", "--porcelain"}).isEmpty());

  // Nobody answers: the editor gives up.
  qputenv("JELV_RI_TIMEOUT", "1");
  InteractiveRebaseGitCommand::Options options;
  options.destination = base;
  EXPECT_TRUE(InteractiveRebaseGitCommand::execute(repo.module(), options).isFailure());
  EXPECT_EQ(repo.headSha(), head);
  EXPECT_FALSE(rebasing());
}

TEST_F(InteractiveRebaseTest, EditStopsAndContinueGoesOn) {
  ASSERT_TRUE(rebase([](auto& l) { l[1].command = Command::edit; }).isSuccess());
  ASSERT_TRUE(rebasing());
  EXPECT_EQ(message("HEAD"), "B");
  repo.writeFile("b.txt", "b amended\n");
  repo.git({"commit", "-q", "-a", "--amend", "--no-edit"});
  const GitVoidResult result = continueRebase();
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_FALSE(rebasing());
  EXPECT_EQ(subjects(), (QStringList{"C", "B", "A", "base"}));
  EXPECT_EQ(repo.git({"show", "HEAD~1:b.txt"}), "b amended\n");
}

class ConflictingRebaseTest : public InteractiveRebaseTest {
 protected:
  void SetUp() override {
    InteractiveRebaseTest::SetUp();
    if (IsSkipped()) return;
    // D changes the line that E changes again: without D, E can't apply.
    d = repo.commitFile("f.txt", "one\n", "D");
    e = repo.commitFile("f.txt", "two\n", "E");
    repo.commitFile("g.txt", "g\n", "G");
  }
  // Rows: G, E, D, C, B, A. D is dropped and E reworded.
  GitVoidResult stopAtConflict() {
    return rebase([](auto& l) {
      l[2].command = Command::drop;
      l[1].command = Command::reword;
      l[1].customMessage = "E reworded";
    });
  }
  QString d, e;
};

TEST_F(ConflictingRebaseTest, AConflictStopsThenContinueKeepsTheNewMessage) {
  ASSERT_TRUE(stopAtConflict().isSuccess());
  ASSERT_TRUE(rebasing());
  // Not while the conflict stands.
  const GitVoidResult early = continueRebase();
  ASSERT_TRUE(early.isFailure());
  EXPECT_TRUE(describe(early.error()).contains("1 file")) << describe(early.error()).toStdString();

  repo.writeFile("f.txt", "two\n");
  repo.git({"add", "f.txt"});
  const GitVoidResult result = continueOperation();
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_FALSE(rebasing());
  EXPECT_EQ(subjects(), (QStringList{"G", "E reworded", "C", "B", "A", "base"}));
  EXPECT_EQ(message("HEAD~1"), "E reworded");
}

TEST_F(InteractiveRebaseTest, RootRewritesTheFirstCommit) {
  InteractiveRebaseGitCommand::Options options;
  options.root = true;
  const GitVoidResult result = rebase(
      [](auto& l) {
        l.back().command = Command::reword;
        l.back().customMessage = "the beginning";
      },
      options);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(received.size(), 4u);
  EXPECT_EQ(subjects(), (QStringList{"C", "B", "A", "the beginning"}));
}

TEST_F(InteractiveRebaseTest, SignsTheRewrittenCommitsWithTheRepositorysKey) {
  if (QStandardPaths::findExecutable("gpg").isEmpty()) GTEST_SKIP() << "no gpg";
  const SigningKey key;
  ASSERT_FALSE(key.fingerprint.isEmpty());

  InteractiveRebaseGitCommand::Options options;
  options.signingKey = key.fingerprint;
  const GitVoidResult result = rebase([](auto& l) { RebaseTodoList::move(l, {2}, 0); }, options);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(subjects(), (QStringList{"A", "C", "B", "base"}));
  for (const QString revision : {"HEAD", "HEAD~1"}) {
    EXPECT_TRUE(repo.git({"cat-file", "commit", revision}).contains("gpgsig")) << revision.toStdString();
  }
  // The base was not rewritten and stays unsigned.
  EXPECT_FALSE(repo.git({"cat-file", "commit", base}).contains("gpgsig"));
}

TEST(RebaseBackupBranch, NameHoldsNoColon) {
  const QString name = RebaseTodoListGitCommand::backupBranchName("main", QDateTime(QDate(2026, 11, 23), QTime(22, 5, 7)));
  EXPECT_EQ(name, "backup/main-2026-11-23-22-05-07");
}

}  // namespace
