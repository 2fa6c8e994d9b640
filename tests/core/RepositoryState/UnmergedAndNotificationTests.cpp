#include <gtest/gtest.h>

#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Models/RepositoryStateNotification.h"
#include "support/LogCapture.h"

namespace {

using S = RepositoryState;

QString L(const char* text) { return QString::fromUtf8(text); }
#define Z(literal) QString::fromUtf8(literal, sizeof(literal) - 1)

const char* kBlobA = "61780798228d17af2d34fce4cfbdf35556832472";

QString sides(const UnmergedFile& file) {
  QString stages;
  if (file.baseVersion) stages += QString::number(file.baseVersion->stage());
  if (file.localVersion) stages += QString::number(file.localVersion->stage());
  if (file.remoteVersion) stages += QString::number(file.remoteVersion->stage());
  return file.path + " " + stages + " local:" + QString::number(static_cast<int>(file.localChangeType)) +
         " remote:" + QString::number(static_cast<int>(file.remoteChangeType));
}

// Rows are `git ls-files --unmerged -z` output of real conflicts.
TEST(UnmergedFilesParserTest, GathersTheStagesOfEachPath) {
  const QString output =
      Z("100644 61780798228d17af2d34fce4cfbdf35556832472 1\tboth modified.txt\0"
        "100644 28ce6a8b26aa170e1de65536fe8abe1832bd3242 2\tboth modified.txt\0"
        "100755 b4785957bc986dc39c629de9fac9df46972c00fc 3\tboth modified.txt\0"
        "100644 8ba3a16384aacc37d01564b28401755ce8053f51 2\tadded\tby both\0"
        "100644 b4785957bc986dc39c629de9fac9df46972c00fc 3\tadded\tby both\0"
        "100644 61780798228d17af2d34fce4cfbdf35556832472 1\tdeleted-by-them \0"
        "100644 28ce6a8b26aa170e1de65536fe8abe1832bd3242 2\tdeleted-by-them \0"
        "100644 61780798228d17af2d34fce4cfbdf35556832472 1\tdeleted-by-us\0"
        "100644 28ce6a8b26aa170e1de65536fe8abe1832bd3242 3\tdeleted-by-us\0"
        "100644 61780798228d17af2d34fce4cfbdf35556832472 1\tdeleted-by-both\0");
  const auto files = GetUnmergedFilesGitCommand::parseUnmergedFiles(output);
  QStringList described;
  for (const auto& file : files) described << sides(file);
  // 0 modified, 1 added, 2 deleted
  EXPECT_EQ(described, (QStringList{"both modified.txt 123 local:0 remote:0", "added\tby both 23 local:1 remote:1",
                                    "deleted-by-them  12 local:0 remote:2", "deleted-by-us 13 local:2 remote:0",
                                    "deleted-by-both 1 local:2 remote:2"}));
  EXPECT_EQ(files[0].remoteVersion->mode, "100755");
  EXPECT_EQ(files[0].baseVersion->sha, L(kBlobA));
}

TEST(UnmergedFilesParserTest, BadEntriesAreLoggedAndDropped) {
  LogCapture log;
  const auto files = GetUnmergedFilesGitCommand::parseUnmergedFiles(
      Z("100644 abc 2\tgood\0"
        "100644 abc\tno stage\0"
        "100644 abc 7\tstage out of range\0"
        "100644 abc 2 no tab\0"
        "100644 abc 3\t\0"
        "\n100644 abc 3\tgood\0"
        "100644 abc 1"));  // cut off
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(sides(files[0]), "good 23 local:1 remote:1");
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error).size(), 5);
}

UnmergedFileList conflicts(int count) {
  UnmergedFileList files;
  for (int i = 0; i < count; ++i) files.push_back(UnmergedFile{"f" + QString::number(i), {}, {}, {}, {}, {}});
  return files;
}

ReferencePtr branch(const char* name, const char* sha = "aaaa") {
  return std::make_shared<const LocalBranch>(L(sha), "refs/heads/" + L(name), L(name), L(name), QDateTime(), false, std::nullopt);
}

// The merge, amend and plural texts are read from real repositories
// (RepositoryStateReadTests); the rows are the singular counts and each state's action.
TEST(RepositoryStateNotificationTest, WordsAndCountsOfEachState) {
  struct Row {
    RepositoryState state;
    const char* message;
    const char* action;  // null for none
  };
  S::RebaseInProgress rebase{branch("topic"), branch("main"), "abc", 1, 1, conflicts(1), false, {}};
  S::RebaseInProgress clean = rebase;
  clean.unmergedFiles.clear();
  clean.done = 2;
  clean.total = 4;
  const Row rows[] = {
      {rebase, "Rebasing branch 'topic'. Rebased 1 of 1 commit. Fix 1 conflict", "Resolve"},
      {clean, "Rebasing branch 'topic'. Rebased 2 of 4 commits", nullptr},
      {S::CherryPickInProgress{branch("main"), branch("topic", "beef"), {}}, "Cherry-picking commit beef", "Resolve"},
      {S::SequencerInProgress{}, "Cherry-pick in progress", "Resolve"},
      {S::RevertInProgress{"cafe", {}}, "Reverting commit cafe", "Resolve"},
      {S::UnmergedFiles{branch("main"), conflicts(1)}, "Index contains 1 unmerged file", "Resolve"},
  };
  for (const Row& row : rows) {
    const auto notification = RepositoryStateNotification::make(row.state);
    ASSERT_TRUE(notification) << row.message;
    EXPECT_EQ(notification->message, L(row.message));
    EXPECT_EQ(notification->mainAction, row.action ? std::optional<QString>(L(row.action)) : std::nullopt) << row.message;
  }
}

TEST(ReferenceMatchingTest, NamesFindTheirReferences) {
  const auto remote =
      std::make_shared<const RemoteBranch>("1111", "refs/remotes/origin/main", "main", "origin/main", QDateTime(), "origin");
  const auto local = branch("main", "2222");
  const ReferenceList references{remote, local};
  // Shas are looked up in RepositoryStateReadTests (a merge's their side, a cherry-pick's commit).
  // "main" is the short name of both; the local branch is meant.
  EXPECT_EQ(GetRepositoryStateGitCommand::referenceForName("main", references), local);
  EXPECT_EQ(GetRepositoryStateGitCommand::referenceForName("origin/main", references), remote);
  EXPECT_EQ(GetRepositoryStateGitCommand::referenceForName("refs/remotes/origin/main", references), remote);
  EXPECT_EQ(GetRepositoryStateGitCommand::referenceForName("gone", references)->name, "gone");
}

TEST(RebaseTodoTest, EntriesSkipBlanksAndComments) {
  EXPECT_EQ(GetRepositoryStateGitCommand::todoEntries("pick a1 one\n\n  # comment\n   squash b2 two  \r\n#x\nexec make"),
            (QStringList{"pick a1 one", "squash b2 two", "exec make"}));
}

}  // namespace
