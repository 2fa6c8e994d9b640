// The state read against real repositories stopped in the middle of each operation.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Models/RepositoryStateNotification.h"
#include "Services/Preferences.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

namespace {

using S = RepositoryState;

QString L(const char* text) { return QString::fromUtf8(text); }

class RepositoryStateReadTest : public ::testing::Test {
 protected:
  void SetUp() override { Preferences::shared().setGitInstance(GitInstanceType::system()); }

  QString sha(const char* name) { return repo.git({"rev-parse", name}).trimmed(); }

  GitResult<RepositoryState> read() {
    auto references = GetReferencesGitCommand::execute(repo.module(), Subdomain::references());
    EXPECT_TRUE(references.isSuccess());
    return GetRepositoryStateGitCommand::execute(repo.module(), references ? references.value() : ReferenceList{});
  }
  RepositoryState state() {
    auto result = read();
    EXPECT_TRUE(result.isSuccess()) << (result ? "" : describe(result.error()).toStdString());
    return result ? result.value() : RepositoryState();
  }
  QString barText(const RepositoryState& state) {
    auto notification = RepositoryStateNotification::make(state);
    return notification ? notification->message : QStringLiteral("<none>");
  }

  // main and side both change "conflict.txt" and both add "added.txt"; side also
  // changes "clean.txt", which merges without a conflict.
  void divergedBranches() {
    repo.writeFile(L("conflict.txt"), "base\n");
    repo.writeFile(L("clean.txt"), "base\n");
    repo.commit(L("base"));
    repo.git({"checkout", "-q", "-b", "side"});
    repo.writeFile(L("conflict.txt"), "side\n");
    repo.writeFile(L("added.txt"), "side\n");
    repo.writeFile(L("clean.txt"), "side\n");
    repo.commit(L("side"));
    repo.git({"checkout", "-q", "main"});
    repo.writeFile(L("conflict.txt"), "main\n");
    repo.writeFile(L("added.txt"), "main\n");
    repo.commit(L("main"));
  }

  // feature has three commits on base; the second conflicts with the one on main.
  void featureToRebase() {
    repo.commitFile(L("f"), "base\n", L("base"));
    repo.git({"checkout", "-q", "-b", "feature"});
    repo.commitFile(L("g1"), "1\n", L("c1"));
    repo.writeFile(L("f"), "feature\n");
    repo.commitFile(L("g2"), "2\n", L("c2"));
    repo.commitFile(L("g3"), "3\n", L("c3"));
    repo.git({"checkout", "-q", "main"});
    repo.commitFile(L("f"), "main\n", L("m"));
    repo.git({"checkout", "-q", "feature"});
  }

  TempRepository repo;
};

TEST_F(RepositoryStateReadTest, MergeWithConflictsThenResolved) {
  divergedBranches();
  const QString mainSha = sha("main");
  repo.git({"merge", "side"}, true);

  RepositoryState merging = state();
  const auto* merge = merging.as<S::MergeInProgress>();
  ASSERT_TRUE(merge);
  EXPECT_EQ(merge->our->fullReference, L("refs/heads/main"));
  EXPECT_EQ(merge->our->sha, mainSha);
  EXPECT_EQ(merge->their->fullReference, L("refs/heads/side"));
  ASSERT_EQ(merge->unmergedFiles.size(), 2u);
  EXPECT_EQ(merge->unmergedFiles[0].path, L("added.txt"));
  EXPECT_EQ(merge->unmergedFiles[1].path, L("conflict.txt"));
  EXPECT_EQ(barText(merging), L("Merging branch 'side' into 'main'. Fix 2 conflicts and then continue."));
  EXPECT_EQ(RepositoryStateNotification::make(merging)->mainAction, L("Resolve"));

  const auto conflicted = merging.unmergedFile(L("conflict.txt"));
  ASSERT_TRUE(conflicted);
  EXPECT_EQ(conflicted->localChangeType, ChangeType::modified);
  EXPECT_TRUE(conflicted->baseVersion.has_value());
  {
    LogCapture log;
    EXPECT_FALSE(merging.unmergedFile(L("clean.txt")));
    EXPECT_TRUE(log.contains(L("Can't find unmerged file for clean.txt")));
  }

  repo.git({"add", "added.txt", "conflict.txt"});
  RepositoryState resolved = state();
  ASSERT_TRUE(resolved.is<S::MergeInProgress>());
  EXPECT_EQ(barText(resolved), L("Merging branch 'side' into 'main'. All conflicts fixed."));
  EXPECT_FALSE(RepositoryStateNotification::make(resolved)->mainAction);
}

TEST_F(RepositoryStateReadTest, MergeHeadWinsOverEveryOtherMarker) {
  divergedBranches();
  repo.git({"merge", "side"}, true);
  for (const char* marker : {"CHERRY_PICK_HEAD", "REVERT_HEAD", "SQUASH_MSG", "BISECT_START"}) {
    repo.writeFile(L(".git/") + L(marker), sha("main").toUtf8() + "\n");
  }
  QDir().mkpath(repo.gitDir() + L("/sequencer"));
  QDir().mkpath(repo.gitDir() + L("/rebase-merge"));
  EXPECT_TRUE(state().is<S::MergeInProgress>());
}

TEST_F(RepositoryStateReadTest, RebaseOfTheMergeKindStoppedAtAConflict) {
  featureToRebase();
  const QString featureSha = sha("feature");
  const QString c2 = sha("feature~1");
  repo.git({"rebase", "main"}, true);
  ASSERT_TRUE(QFileInfo(repo.gitDir() + L("/rebase-merge")).isDir());

  RepositoryState rebasing = state();
  const auto* rebase = rebasing.as<S::RebaseInProgress>();
  ASSERT_TRUE(rebase);
  EXPECT_EQ(rebase->our->fullReference, L("refs/heads/feature"));
  EXPECT_EQ(rebase->our->sha, featureSha);
  EXPECT_EQ(rebase->their->fullReference, L("refs/heads/main"));
  EXPECT_EQ(rebase->activeSha, c2);
  EXPECT_EQ(rebase->done, 1);  // c1 is done, c2 is the one stopped at
  EXPECT_EQ(rebase->total, 3);
  EXPECT_FALSE(rebase->amend);
  ASSERT_EQ(rebase->unmergedFiles.size(), 1u);
  EXPECT_EQ(barText(rebasing), L("Rebasing branch 'feature'. Rebased 1 of 3 commits. Fix 1 conflict"));

  // Without a finished entry the count must not go below zero, and there is no sha.
  repo.writeFile(L(".git/rebase-merge/done"), "");
  const RepositoryState withEmptyDone = state();
  const auto* emptyDone = withEmptyDone.as<S::RebaseInProgress>();
  ASSERT_TRUE(emptyDone);
  EXPECT_FALSE(emptyDone->activeSha);
  EXPECT_EQ(emptyDone->done, 0);
  EXPECT_EQ(emptyDone->total, 1);

  // Without the commit it rebases onto, the read fails as a whole.
  QFile::remove(repo.gitDir() + L("/rebase-merge/onto"));
  EXPECT_TRUE(read().isError<Error::UnknownException>());
}

TEST_F(RepositoryStateReadTest, InteractiveRebaseStoppedToEditIsAmending) {
  featureToRebase();
  qputenv("GIT_SEQUENCE_EDITOR", "sed -i -e '1s/^pick/edit/'");
  repo.git({"rebase", "-i", "HEAD~3"});
  qunsetenv("GIT_SEQUENCE_EDITOR");
  const QString c1 = sha("feature~2");

  RepositoryState editing = state();
  const auto* rebase = editing.as<S::RebaseInProgress>();
  ASSERT_TRUE(rebase);
  EXPECT_EQ(rebase->amend, c1);
  EXPECT_EQ(rebase->activeSha, c1);
  EXPECT_EQ(rebase->done, 0);
  EXPECT_EQ(rebase->total, 3);
  EXPECT_TRUE(rebase->unmergedFiles.empty());
  EXPECT_EQ(barText(editing), L("Rebasing branch 'feature'. Rebased 0 of 3 commits. Amending '") + c1 + L("'"));
}

TEST_F(RepositoryStateReadTest, RebaseOfTheMailboxKindStoppedAtAConflict) {
  featureToRebase();
  const QString c2 = sha("feature~1");
  repo.git({"rebase", "--apply", "main"}, true);
  ASSERT_TRUE(QFileInfo(repo.gitDir() + L("/rebase-apply")).isDir());

  RepositoryState rebasing = state();
  const auto* rebase = rebasing.as<S::RebaseInProgress>();
  ASSERT_TRUE(rebase);
  EXPECT_EQ(rebase->our->fullReference, L("refs/heads/feature"));
  EXPECT_EQ(rebase->their->fullReference, L("refs/heads/main"));
  EXPECT_EQ(rebase->activeSha, c2);
  EXPECT_EQ(rebase->done, 1);
  EXPECT_EQ(rebase->total, 3);
  EXPECT_FALSE(rebase->interactive);

  // A companion that can't be read fails the whole read.
  repo.writeFile(L(".git/rebase-apply/next"), "two\n");
  EXPECT_TRUE(read().isError<Error::UnknownException>());
  QFile::remove(repo.gitDir() + L("/rebase-apply/next"));
  EXPECT_TRUE(read().isError<Error::UnknownException>());
}

TEST_F(RepositoryStateReadTest, MailboxSessionThatIsNoRebaseLetsTheTestsGoOn) {
  featureToRebase();
  const QByteArray patch = repo.gitBytes({L("format-patch"), L("-1"), L("--stdout"), L("feature~1")});
  repo.git({"checkout", "-q", "main"});
  int status = 0;
  runProgram(L("git"), {L("am"), L("-3")}, repo.path(), &status, patch);
  ASSERT_NE(status, 0) << "the patch should stop with a conflict";
  ASSERT_TRUE(QFileInfo(repo.gitDir() + L("/rebase-apply/applying")).isFile());
  RepositoryState applying = state();
  const auto* unmerged = applying.as<S::UnmergedFiles>();
  ASSERT_TRUE(unmerged) << barText(applying).toStdString();
  EXPECT_EQ(unmerged->reference->fullReference, L("refs/heads/main"));
}

TEST_F(RepositoryStateReadTest, CherryPickWithAConflictThenTheSequencerAlone) {
  divergedBranches();
  repo.git({"checkout", "-q", "side"});
  repo.commitFile(L("conflict.txt"), "side again\n", L("side 2"));
  repo.git({"checkout", "-q", "main"});
  const QString first = sha("side~1");
  repo.git({"cherry-pick", "side~1", "side"}, true);

  RepositoryState picking = state();
  const auto* pick = picking.as<S::CherryPickInProgress>();
  ASSERT_TRUE(pick);
  EXPECT_EQ(pick->head->fullReference, L("refs/heads/main"));
  EXPECT_EQ(pick->cherryPickHead->sha, first);
  EXPECT_EQ(pick->cherryPickHead->kind(), Reference::Kind::plain);  // no reference points there
  EXPECT_EQ(barText(picking), L("Cherry-picking commit ") + first + L(". Fix 2 conflicts"));

  // Committing by hand ends the pick of this commit but leaves the sequence.
  repo.git({"add", "-A"});
  repo.git({"commit", "-q", "--no-edit"});
  EXPECT_TRUE(state().is<S::SequencerInProgress>());
  EXPECT_EQ(barText(state()), L("Cherry-pick in progress"));
}

TEST_F(RepositoryStateReadTest, RevertWithAConflict) {
  repo.commitFile(L("f"), "1\n", L("one"));
  repo.commitFile(L("f"), "2\n", L("two"));
  const QString two = sha("HEAD");
  repo.commitFile(L("f"), "3\n", L("three"));
  repo.git({"revert", "--no-edit", "HEAD~1"}, true);

  RepositoryState reverting = state();
  const auto* revert = reverting.as<S::RevertInProgress>();
  ASSERT_TRUE(revert);
  EXPECT_EQ(revert->revertHead, two);
  EXPECT_EQ(revert->unmergedFiles.size(), 1u);
  EXPECT_EQ(barText(reverting), L("Reverting commit ") + two + L(". Fix 1 conflict"));
}

TEST_F(RepositoryStateReadTest, SquashMerge) {
  divergedBranches();
  repo.git({"checkout", "-q", "-b", "target", "main~1"});
  repo.git({"merge", "--squash", "side"});
  EXPECT_TRUE(state().is<S::SquashInProgress>());
  EXPECT_EQ(barText(state()), L("Squashing commits"));
}

TEST_F(RepositoryStateReadTest, UnmergedEntriesWithoutAMarkerEvenWhileBisecting) {
  divergedBranches();
  repo.git({"merge", "side"}, true);
  for (const char* marker : {"MERGE_HEAD", "MERGE_MSG", "MERGE_MODE"}) QFile::remove(repo.gitDir() + L("/") + L(marker));
  repo.writeFile(L(".git/BISECT_START"), "main\n");

  RepositoryState unmergedState = state();
  const auto* unmerged = unmergedState.as<S::UnmergedFiles>();
  ASSERT_TRUE(unmerged);
  EXPECT_EQ(unmerged->reference->fullReference, L("refs/heads/main"));
  EXPECT_EQ(unmerged->unmergedFiles.size(), 2u);
  EXPECT_EQ(barText(unmergedState), L("Index contains 2 unmerged files"));
}

TEST_F(RepositoryStateReadTest, BisectBeforeAndAfterTheFirstMarks) {
  repo.commitFile(L("f"), "1\n", L("one"));
  repo.commitFile(L("f"), "2\n", L("two"));
  repo.commitFile(L("f"), "3\n", L("three"));
  repo.git({"bisect", "start"});
  RepositoryState started = state();
  const auto* bisect = started.as<S::BisectInProgress>();
  ASSERT_TRUE(bisect);
  EXPECT_EQ(bisect->start->fullReference, L("refs/heads/main"));
  EXPECT_FALSE(bisect->current);
  EXPECT_EQ(barText(started),
            L("Bisecting, started from 'main'. Mark current commit as good or bad and checkout another one"));

  repo.git({"bisect", "bad"});
  repo.git({"bisect", "good", "HEAD~2"});
  const QString current = sha("HEAD");
  RepositoryState marked = state();
  ASSERT_TRUE(marked.is<S::BisectInProgress>());
  EXPECT_EQ(marked.as<S::BisectInProgress>()->current, current);
  EXPECT_EQ(barText(marked), L("Bisecting, started from 'main'. Is '") + current + L("' good or bad?"));
  EXPECT_EQ(RepositoryStateNotification::make(marked)->mainAction, L("Good"));
}

TEST_F(RepositoryStateReadTest, CleanRepositoryIsOkWithAStopwatchAndAPlainFolderFails) {
  repo.commitFile(L("a"), "a\n", L("a"));
  EXPECT_TRUE(state().is<S::Ok>());
  EXPECT_FALSE(RepositoryStateNotification::make(state()));
  JobProgress progress;
  ASSERT_TRUE(GetRepositoryStateGitCommand::execute(repo.module(), {}, &progress).isSuccess());
  QStringList names;
  for (const auto& event : progress.profileEvents()) names << event.name;
  EXPECT_EQ(names, (QStringList{L("GetRepositoryStateGitCommand"), L("GetRepositoryStateGitCommand")}));

  TempRepository plain(false);
  EXPECT_TRUE(GetRepositoryStateGitCommand::execute(plain.module(), {}).isError<Error::GitUnknownError>());
}

}  // namespace
