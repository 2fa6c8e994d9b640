// The state read against real repositories stopped in the middle of each operation.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Models/RepositoryStateNotification.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

using S = RepositoryState;

QString L(const char* text) { return QString::fromUtf8(text); }

class RepositoryStateReadTest : public ::testing::Test {
 protected:
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
  // A rebase's progress in one line: "active-sha done/total amended-sha unmerged-count".
  static QString progress(const RepositoryState& state) {
    const auto* r = state.as<S::RebaseInProgress>();
    if (!r) return "no rebase";
    return QStringList{r->activeSha.value_or("-"), QStringLiteral("%1/%2").arg(r->done).arg(r->total), r->amend.value_or("-"),
                       QString::number(r->unmergedFiles.size())}
        .join(' ');
  }
  QString barText(const RepositoryState& state) {
    auto notification = RepositoryStateNotification::make(state);
    return notification ? notification->message : "<none>";
  }

  // main and side both change "conflict.txt" and both add "added.txt"; side also
  // changes "clean.txt", which merges without a conflict.
  void divergedBranches() {
    repo.writeFile("conflict.txt", "base\n");
    repo.writeFile("clean.txt", "base\n");
    repo.commit("base");
    repo.git({"checkout", "-q", "-b", "side"});
    repo.writeFile("conflict.txt", "side\n");
    repo.writeFile("added.txt", "side\n");
    repo.writeFile("clean.txt", "side\n");
    repo.commit("side");
    repo.git({"checkout", "-q", "main"});
    repo.writeFile("conflict.txt", "main\n");
    repo.writeFile("added.txt", "main\n");
    repo.commit("main");
  }

  // feature has three commits on base; the second conflicts with the one on main.
  void featureToRebase() {
    repo.commitFile("f", "base\n", "base");
    repo.git({"checkout", "-q", "-b", "feature"});
    repo.commitFile("g1", "1\n", "c1");
    repo.writeFile("f", "feature\n");
    repo.commitFile("g2", "2\n", "c2");
    repo.commitFile("g3", "3\n", "c3");
    repo.git({"checkout", "-q", "main"});
    repo.commitFile("f", "main\n", "m");
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
  EXPECT_EQ(merge->our->fullReference, "refs/heads/main");
  EXPECT_EQ(merge->our->sha, mainSha);
  EXPECT_EQ(merge->their->fullReference, "refs/heads/side");
  ASSERT_EQ(merge->unmergedFiles.size(), 2u);
  EXPECT_EQ(merge->unmergedFiles[0].path, "added.txt");
  EXPECT_EQ(merge->unmergedFiles[1].path, "conflict.txt");
  EXPECT_EQ(barText(merging), "Merging branch 'side' into 'main'. Fix 2 conflicts and then continue.");
  EXPECT_EQ(RepositoryStateNotification::make(merging)->mainAction, "Resolve");

  const auto conflicted = merging.unmergedFile("conflict.txt");
  ASSERT_TRUE(conflicted);
  EXPECT_EQ(conflicted->localChangeType, ChangeType::modified);
  EXPECT_TRUE(conflicted->baseVersion.has_value());
  {
    LogCapture log;
    EXPECT_FALSE(merging.unmergedFile("clean.txt"));
    EXPECT_TRUE(log.contains("Can't find unmerged file for clean.txt"));
  }

  repo.git({"add", "added.txt", "conflict.txt"});
  RepositoryState resolved = state();
  ASSERT_TRUE(resolved.is<S::MergeInProgress>());
  EXPECT_EQ(barText(resolved), "Merging branch 'side' into 'main'. All conflicts fixed.");
  EXPECT_FALSE(RepositoryStateNotification::make(resolved)->mainAction);

  // MERGE_HEAD wins over every other marker.
  for (const char* marker : {"CHERRY_PICK_HEAD", "REVERT_HEAD", "SQUASH_MSG", "BISECT_START"}) {
    repo.writeFile(".git/" + L(marker), mainSha.toUtf8() + "\n");
  }
  QDir().mkpath(repo.gitDir() + "/sequencer");
  QDir().mkpath(repo.gitDir() + "/rebase-merge");
  EXPECT_TRUE(state().is<S::MergeInProgress>());
}

TEST_F(RepositoryStateReadTest, RebaseOfTheMergeKindStoppedAtAConflict) {
  featureToRebase();
  const QString featureSha = sha("feature");
  const QString c2 = sha("feature~1");
  repo.git({"rebase", "main"}, true);
  ASSERT_TRUE(QFileInfo(repo.gitDir() + "/rebase-merge").isDir());

  // c1 is done, c2 is the one stopped at.
  const RepositoryState rebasing = state();
  ASSERT_TRUE(rebasing.is<S::RebaseInProgress>());
  EXPECT_EQ(rebasing.as<S::RebaseInProgress>()->our->fullReference, "refs/heads/feature");
  EXPECT_EQ(rebasing.as<S::RebaseInProgress>()->our->sha, featureSha);
  EXPECT_EQ(rebasing.as<S::RebaseInProgress>()->their->fullReference, "refs/heads/main");
  EXPECT_EQ(progress(rebasing), c2 + " 1/3 - 1");
  EXPECT_EQ(barText(rebasing), "Rebasing branch 'feature'. Rebased 1 of 3 commits. Fix 1 conflict");

  // Without a finished entry the count must not go below zero, and there is no sha.
  repo.writeFile(".git/rebase-merge/done", "");
  EXPECT_EQ(progress(state()), "- 0/1 - 1");

  // Without the commit it rebases onto, the read fails as a whole.
  QFile::remove(repo.gitDir() + "/rebase-merge/onto");
  EXPECT_TRUE(read().isError<Error::UnknownException>());
}

TEST_F(RepositoryStateReadTest, InteractiveRebaseStoppedToEditIsAmending) {
  featureToRebase();
  qputenv("GIT_SEQUENCE_EDITOR", "sed -i -e '1s/^pick/edit/'");
  repo.git({"rebase", "-i", "HEAD~3"});
  qunsetenv("GIT_SEQUENCE_EDITOR");
  const QString c1 = sha("feature~2");

  const RepositoryState editing = state();
  EXPECT_EQ(progress(editing), c1 + " 0/3 " + c1 + " 0");
  EXPECT_EQ(barText(editing), "Rebasing branch 'feature'. Rebased 0 of 3 commits. Amending '" + c1 + "'");
}

TEST_F(RepositoryStateReadTest, RebaseOfTheMailboxKindStoppedAtAConflict) {
  featureToRebase();
  const QString c2 = sha("feature~1");
  repo.git({"rebase", "--apply", "main"}, true);
  ASSERT_TRUE(QFileInfo(repo.gitDir() + "/rebase-apply").isDir());

  const RepositoryState rebasing = state();
  ASSERT_TRUE(rebasing.is<S::RebaseInProgress>());
  EXPECT_EQ(rebasing.as<S::RebaseInProgress>()->our->fullReference, "refs/heads/feature");
  EXPECT_EQ(rebasing.as<S::RebaseInProgress>()->their->fullReference, "refs/heads/main");
  EXPECT_EQ(progress(rebasing), c2 + " 1/3 - 1");

  // A companion that can't be read fails the whole read.
  repo.writeFile(".git/rebase-apply/next", "two\n");
  EXPECT_TRUE(read().isError<Error::UnknownException>());
  QFile::remove(repo.gitDir() + "/rebase-apply/next");
  EXPECT_TRUE(read().isError<Error::UnknownException>());
}

TEST_F(RepositoryStateReadTest, MailboxSessionThatIsNoRebaseLetsTheTestsGoOn) {
  featureToRebase();
  const QByteArray patch = repo.gitBytes({"format-patch", "-1", "--stdout", "feature~1"});
  repo.git({"checkout", "-q", "main"});
  int status = 0;
  runProgram("git", {"am", "-3"}, repo.path(), &status, patch);
  ASSERT_NE(status, 0) << "the patch should stop with a conflict";
  ASSERT_TRUE(QFileInfo(repo.gitDir() + "/rebase-apply/applying").isFile());
  RepositoryState applying = state();
  const auto* unmerged = applying.as<S::UnmergedFiles>();
  ASSERT_TRUE(unmerged) << barText(applying).toStdString();
  EXPECT_EQ(unmerged->reference->fullReference, "refs/heads/main");
}

TEST_F(RepositoryStateReadTest, CherryPickWithAConflictThenTheSequencerAlone) {
  divergedBranches();
  repo.git({"checkout", "-q", "side"});
  repo.commitFile("conflict.txt", "side again\n", "side 2");
  repo.git({"checkout", "-q", "main"});
  const QString first = sha("side~1");
  repo.git({"cherry-pick", "side~1", "side"}, true);

  RepositoryState picking = state();
  const auto* pick = picking.as<S::CherryPickInProgress>();
  ASSERT_TRUE(pick);
  EXPECT_EQ(pick->head->fullReference, "refs/heads/main");
  EXPECT_EQ(pick->cherryPickHead->sha, first);
  EXPECT_EQ(pick->cherryPickHead->kind(), Reference::Kind::plain);  // no reference points there
  EXPECT_EQ(barText(picking), "Cherry-picking commit " + first + ". Fix 2 conflicts");

  // Committing by hand ends the pick of this commit but leaves the sequence.
  repo.git({"add", "-A"});
  repo.git({"commit", "-q", "--no-edit"});
  EXPECT_TRUE(state().is<S::SequencerInProgress>());
  EXPECT_EQ(barText(state()), "Cherry-pick in progress");
}

TEST_F(RepositoryStateReadTest, RevertWithAConflict) {
  repo.commitFile("f", "1\n", "one");
  repo.commitFile("f", "2\n", "two");
  const QString two = sha("HEAD");
  repo.commitFile("f", "3\n", "three");
  repo.git({"revert", "--no-edit", "HEAD~1"}, true);

  RepositoryState reverting = state();
  const auto* revert = reverting.as<S::RevertInProgress>();
  ASSERT_TRUE(revert);
  EXPECT_EQ(revert->revertHead, two);
  EXPECT_EQ(revert->unmergedFiles.size(), 1u);
  EXPECT_EQ(barText(reverting), "Reverting commit " + two + ". Fix 1 conflict");
}

TEST_F(RepositoryStateReadTest, SquashMerge) {
  divergedBranches();
  repo.git({"checkout", "-q", "-b", "target", "main~1"});
  repo.git({"merge", "--squash", "side"});
  EXPECT_TRUE(state().is<S::SquashInProgress>());
  EXPECT_EQ(barText(state()), "Squashing commits");
}

TEST_F(RepositoryStateReadTest, UnmergedEntriesWithoutAMarkerEvenWhileBisecting) {
  divergedBranches();
  repo.git({"merge", "side"}, true);
  for (const char* marker : {"MERGE_HEAD", "MERGE_MSG", "MERGE_MODE"}) QFile::remove(repo.gitDir() + "/" + L(marker));
  repo.writeFile(".git/BISECT_START", "main\n");

  RepositoryState unmergedState = state();
  const auto* unmerged = unmergedState.as<S::UnmergedFiles>();
  ASSERT_TRUE(unmerged);
  EXPECT_EQ(unmerged->reference->fullReference, "refs/heads/main");
  EXPECT_EQ(unmerged->unmergedFiles.size(), 2u);
  EXPECT_EQ(barText(unmergedState), "Index contains 2 unmerged files");
}

TEST_F(RepositoryStateReadTest, BisectBeforeAndAfterTheFirstMarks) {
  repo.commitFile("f", "1\n", "one");
  repo.commitFile("f", "2\n", "two");
  repo.commitFile("f", "3\n", "three");
  repo.git({"bisect", "start"});
  RepositoryState started = state();
  const auto* bisect = started.as<S::BisectInProgress>();
  ASSERT_TRUE(bisect);
  EXPECT_EQ(bisect->start->fullReference, "refs/heads/main");
  EXPECT_FALSE(bisect->current);
  EXPECT_EQ(barText(started), "Bisecting, started from 'main'. Mark current commit as good or bad and checkout another one");

  repo.git({"bisect", "bad"});
  repo.git({"bisect", "good", "HEAD~2"});
  const QString current = sha("HEAD");
  RepositoryState marked = state();
  ASSERT_TRUE(marked.is<S::BisectInProgress>());
  EXPECT_EQ(marked.as<S::BisectInProgress>()->current, current);
  EXPECT_EQ(barText(marked), "Bisecting, started from 'main'. Is '" + current + "' good or bad?");
  EXPECT_EQ(RepositoryStateNotification::make(marked)->mainAction, "Good");
}

TEST_F(RepositoryStateReadTest, CleanRepositoryIsOkWithAStopwatchAndAPlainFolderFails) {
  repo.commitFile("a", "a\n", "a");
  EXPECT_TRUE(state().is<S::Ok>());
  EXPECT_FALSE(RepositoryStateNotification::make(state()));
  JobProgress progress;
  ASSERT_TRUE(GetRepositoryStateGitCommand::execute(repo.module(), {}, &progress).isSuccess());
  QStringList names;
  for (const auto& event : progress.profileEvents()) names << event.name;
  EXPECT_EQ(names, (QStringList{"GetRepositoryStateGitCommand", "GetRepositoryStateGitCommand"}));

  TempRepository plain(false);
  EXPECT_TRUE(GetRepositoryStateGitCommand::execute(plain.module(), {}).isError<Error::GitUnknownError>());
}

}  // namespace
