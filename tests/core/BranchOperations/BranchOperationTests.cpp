#include <gtest/gtest.h>

#include <QFileInfo>

#include "Git/Commands/Merge/MergeGitCommand.h"
#include "Git/Commands/Merge/OperationControlGitCommand.h"
#include "Git/Commands/Merge/RebaseGitCommand.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Git/Commands/Repository/CheckoutGitCommand.h"
#include "Git/Commands/Repository/RenameBranchGitCommand.h"
#include "Git/Commands/Revision/CherryPickGitCommand.h"
#include "Git/Commands/Revision/ResetGitCommand.h"
#include "Git/Commands/Revision/RevertGitCommand.h"
#include "Models/ReferenceNameCheck.h"
#include "support/TempRepository.h"

namespace {

using Operation = OperationControlGitCommand::Operation;
using Action = OperationControlGitCommand::Action;

QString q(const char* text) { return QString::fromUtf8(text); }

class BranchOperations : public ::testing::Test {
 protected:
  void SetUp() override { base = repo.commitFile(q("file.txt"), "one\ntwo\nthree\n", q("base")); }
  QString rev(const QString& name) const { return repo.git({q("rev-parse"), name}).trimmed(); }
  bool exists(const QString& name) const {
    int status = 0;
    repo.git({q("rev-parse"), q("--verify"), q("--quiet"), name}, true, &status);
    return status == 0;
  }
  // "topic" changes the middle line one way, "main" another: merging them conflicts.
  void makeConflict() {
    repo.git({q("checkout"), q("-q"), q("-b"), q("topic")});
    repo.commitFile(q("file.txt"), "one\nTOPIC\nthree\n", q("topic change"));
    repo.git({q("checkout"), q("-q"), q("main")});
    repo.commitFile(q("file.txt"), "one\nMAIN\nthree\n", q("main change"));
  }

  TempRepository repo;
  QString base;
};

}  // namespace

TEST_F(BranchOperations, AnUnmergedBranchIsDeletedOnlyByForce) {
  repo.git({q("checkout"), q("-q"), q("-b"), q("topic")});
  repo.commitFile(q("extra.txt"), "x\n", q("only on topic"));
  repo.git({q("checkout"), q("-q"), q("main")});

  const GitVoidResult plain = BranchGitCommand::remove(repo.module(), q("topic"), false);
  ASSERT_TRUE(plain.isError<Error::BranchNotFullyMerged>());
  EXPECT_TRUE(plain.errorAs<Error::BranchNotFullyMerged>()->error.contains(q("is not fully merged")));
  EXPECT_TRUE(exists(q("refs/heads/topic")));

  ASSERT_TRUE(BranchGitCommand::remove(repo.module(), q("topic"), true));
  EXPECT_FALSE(exists(q("refs/heads/topic")));
  // Another failure of git is no "not merged" case.
  EXPECT_TRUE(BranchGitCommand::remove(repo.module(), q("main"), false).isError<Error::GitUnknownError>());
}

TEST(ReferenceNameCheck, RefusesWhatGitRefusesAndCaseOnlyClashes) {
  for (const char* bad : {"a b", "-x", "a..b", "a~1", "x^", "a:b", "a?", "a*", "a[b", "a\\b", "end/", "end.", "x.lock", "a/.b", "@", "a@{b"}) {
    EXPECT_TRUE(ReferenceNameCheck::problem(q(bad)).has_value()) << bad;
  }
  for (const char* good : {"topic", "feature/login-form", "fix_123", "rel.2", "ünïcode"}) {
    EXPECT_FALSE(ReferenceNameCheck::problem(q(good)).has_value()) << good;
  }
  EXPECT_EQ(ReferenceNameCheck::clash(q("Topic"), {q("main"), q("topic")}), q("Branch Topic already exists"));
  EXPECT_FALSE(ReferenceNameCheck::clash(q("topics"), {q("topic")}).has_value());
}

TEST_F(BranchOperations, SquashWinsOverNoFastForwardAndNoFastForwardMakesAMergeCommit) {
  repo.git({q("checkout"), q("-q"), q("-b"), q("topic")});
  repo.commitFile(q("new.txt"), "n\n", q("topic work"));
  repo.git({q("checkout"), q("-q"), q("main")});

  ASSERT_TRUE(MergeGitCommand::execute(repo.module(), q("topic"), {.squash = true, .noFastForward = true}));
  EXPECT_EQ(rev(q("HEAD")), base);  // nothing committed
  EXPECT_TRUE(repo.git({q("diff"), q("--cached"), q("--name-only")}).contains(q("new.txt")));
  repo.git({q("reset"), q("-q"), q("--hard")});

  ASSERT_TRUE(MergeGitCommand::execute(repo.module(), q("topic"), {.noFastForward = true}));
  EXPECT_EQ(repo.git({q("rev-list"), q("--parents"), q("-n1"), q("HEAD")}).split(' ').size(), 3);  // two parents
}

TEST_F(BranchOperations, AMergeStoppedByConflictsIsAbortedOrContinued) {
  makeConflict();
  const QString before = rev(q("HEAD"));
  const GitVoidResult merged = MergeGitCommand::execute(repo.module(), q("topic"), {});
  ASSERT_TRUE(merged.isError<Error::GitUnknownError>());
  EXPECT_TRUE(merged.errorAs<Error::GitUnknownError>()->output.contains(q("CONFLICT")));
  ASSERT_TRUE(QFileInfo::exists(repo.gitDir() + q("/MERGE_HEAD")));

  ASSERT_TRUE(OperationControlGitCommand::execute(repo.module(), Operation::merge, Action::abort));
  EXPECT_FALSE(QFileInfo::exists(repo.gitDir() + q("/MERGE_HEAD")));
  EXPECT_EQ(repo.readFile(q("file.txt")), QByteArray("one\nMAIN\nthree\n"));

  MergeGitCommand::execute(repo.module(), q("topic"), {});
  // Continuing with the conflict still in the file is refused; once resolved, it commits.
  EXPECT_FALSE(OperationControlGitCommand::execute(repo.module(), Operation::merge, Action::continueOperation));
  repo.writeFile(q("file.txt"), "one\nBOTH\nthree\n");
  repo.stageAll();
  ASSERT_TRUE(OperationControlGitCommand::execute(repo.module(), Operation::merge, Action::continueOperation));
  EXPECT_EQ(rev(q("HEAD^1")), before);
  EXPECT_EQ(rev(q("HEAD^2")), rev(q("topic")));
  EXPECT_TRUE(OperationControlGitCommand::arguments(Operation::merge, Action::skip).isEmpty());
}

TEST_F(BranchOperations, ARebaseStoppedByAConflictIsNoFailureAndCanBeSkippedOrAborted) {
  makeConflict();
  repo.git({q("checkout"), q("-q"), q("topic")});
  const QString topic = rev(q("HEAD"));
  ASSERT_TRUE(RebaseGitCommand::execute(repo.module(), q("main"), false, {}));
  ASSERT_TRUE(RebaseGitCommand::isInProgress(repo.module()));
  ASSERT_TRUE(OperationControlGitCommand::execute(repo.module(), Operation::rebase, Action::abort));
  EXPECT_FALSE(RebaseGitCommand::isInProgress(repo.module()));
  EXPECT_EQ(rev(q("HEAD")), topic);

  RebaseGitCommand::execute(repo.module(), q("main"), false, {});
  ASSERT_TRUE(OperationControlGitCommand::execute(repo.module(), Operation::rebase, Action::skip));
  EXPECT_FALSE(RebaseGitCommand::isInProgress(repo.module()));
  EXPECT_EQ(rev(q("topic")), rev(q("main")));  // the only topic commit was skipped
  // A target that does not exist is a plain failure, not a rebase under way.
  EXPECT_FALSE(RebaseGitCommand::execute(repo.module(), q("no-such-branch"), false, {}));
}

TEST_F(BranchOperations, CherryPickOfAMergeNeedsItsMainlineAndRevertCanStayUncommitted) {
  repo.git({q("checkout"), q("-q"), q("-b"), q("side")});
  repo.commitFile(q("side.txt"), "s\n", q("side"));
  repo.git({q("checkout"), q("-q"), q("main")});
  repo.git({q("merge"), q("-q"), q("--no-ff"), q("-m"), q("merge side"), q("side")});
  const QString mergeSha = rev(q("HEAD"));
  repo.git({q("checkout"), q("-q"), q("-b"), q("target"), base});

  EXPECT_FALSE(CherryPickGitCommand::execute(repo.module(), {mergeSha}, {}));
  repo.git({q("cherry-pick"), q("--abort")}, true);
  ASSERT_TRUE(CherryPickGitCommand::execute(repo.module(), {mergeSha}, {.parentNumber = 1}));
  EXPECT_EQ(repo.readFile(q("side.txt")), QByteArray("s\n"));

  const QString picked = rev(q("HEAD"));
  ASSERT_TRUE(RevertGitCommand::execute(repo.module(), picked, {.commit = false}));
  EXPECT_EQ(rev(q("HEAD")), picked);
  EXPECT_TRUE(repo.git({q("diff"), q("--cached"), q("--name-status")}).contains(q("D\tside.txt")));
  repo.git({q("revert"), q("--abort")}, true);
  repo.git({q("reset"), q("-q"), q("--hard")});
  ASSERT_TRUE(RevertGitCommand::execute(repo.module(), picked, {}));
  EXPECT_TRUE(repo.git({q("log"), q("-1"), q("--format=%s")}).startsWith(q("Revert")));
  EXPECT_FALSE(QFileInfo::exists(repo.path() + q("/side.txt")));
}

TEST_F(BranchOperations, ResetModesKeepWhatTheyPromise) {
  const QString second = repo.commitFile(q("file.txt"), "changed\n", q("second"));
  repo.writeFile(q("file.txt"), "dirty\n");
  ASSERT_TRUE(ResetGitCommand::execute(repo.module(), base, ResetGitCommand::Mode::soft));
  EXPECT_EQ(rev(q("HEAD")), base);
  EXPECT_EQ(repo.readFile(q("file.txt")), QByteArray("dirty\n"));
  EXPECT_TRUE(repo.git({q("diff"), q("--cached"), q("--name-only")}).contains(q("file.txt")));

  ASSERT_TRUE(ResetGitCommand::execute(repo.module(), second, ResetGitCommand::Mode::hard));
  EXPECT_EQ(rev(q("HEAD")), second);
  EXPECT_EQ(repo.readFile(q("file.txt")), QByteArray("changed\n"));
}

// A clone whose remote moved on: the twin is fast-forwarded, a new branch tracks, and a
// rename carries over to the remote.
TEST(RemoteBranchOperations, TwinFastForwardTrackingAndRenameOnTheRemote) {
  TempRepository origin;
  origin.commitFile(q("a.txt"), "a\n", q("first"));
  origin.git({q("branch"), q("topic")});
  TempRepository clone(false, q("clone"));
  runProgram(q("git"), {q("clone"), q("-q"), origin.path(), clone.path()});
  const QString moved = origin.commitFile(q("a.txt"), "a\nb\n", q("second"));
  clone.git({q("fetch"), q("-q")});
  clone.git({q("checkout"), q("-q"), q("-b"), q("work")});

  ASSERT_TRUE(CheckoutGitCommand::checkoutAndFastForward(clone.module(), q("main"), q("origin/main")));
  EXPECT_EQ(clone.git({q("rev-parse"), q("main")}).trimmed(), moved);
  EXPECT_EQ(clone.git({q("branch"), q("--show-current")}).trimmed(), q("main"));

  ASSERT_TRUE(CheckoutGitCommand::track(clone.module(), q("my topic"), q("origin/topic")).isFailure());  // a blank
  ASSERT_TRUE(CheckoutGitCommand::track(clone.module(), q("topic"), q("origin/topic")));
  EXPECT_EQ(clone.git({q("rev-parse"), q("--abbrev-ref"), q("topic@{upstream}")}).trimmed(), q("origin/topic"));

  origin.git({q("checkout"), q("-q"), q("--detach")});  // lets the remote's branches be deleted
  ASSERT_TRUE(RenameBranchGitCommand::execute(clone.module(), q("topic"), q("renamed"), q("origin")));
  EXPECT_EQ(origin.git({q("branch"), q("--list"), q("topic"), q("renamed")}).simplified(), q("renamed"));
  EXPECT_EQ(clone.git({q("rev-parse"), q("--abbrev-ref"), q("renamed@{upstream}")}).trimmed(), q("origin/renamed"));
}
