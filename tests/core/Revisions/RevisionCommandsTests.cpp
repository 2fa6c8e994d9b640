// The history, stash, details and single-revision reads against real repositories.
#include <gtest/gtest.h>

#include "../References/ReferencesTestSupport.h"
#include "Git/Commands/Revision/GetRevisionDetailsGitCommand.h"
#include "Git/Commands/Revision/GetRevisionInfosGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Git/Commands/Revision/RevisionSearchGitCommand.h"
#include "Jobs/JobProgress.h"
#include "RevisionsTestSupport.h"
#include "Services/Preferences.h"

namespace {

QStringList shas(const RevisionList& list) {
  QStringList result;
  for (const auto& revision : list) result << revision->sha().toString();
  return result;
}

// main with a merged side branch, a tag on a commit no branch holds, and a remote branch.
class RevisionsRepositoryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    root = commitAt("1500000000 +0000", repo, "a", "1", "root");
    repo.git({"checkout", "-q", "-b", "side"});
    side = commitAt("1500000100 +0000", repo, "side", "1", "side");
    repo.git({"checkout", "-q", "main"});
    {
      FixedDates dates("1500000200 +0000", "1500000200 +0000");
      mainline = repo.commitFile("a", "2", "main");
      repo.git({"merge", "-q", "--no-ff", "-m", "Merge side", "side"});
      merge = repo.headSha();
    }
    repo.git({"checkout", "-q", "--detach"});
    tagged = repo.commitFile("t", "1", "tagged only");
    repo.git({"tag", "-a", "-m", "t", "only-tag"});
    remoteOnly = repo.commitFile("r", "1", "remote only");
    repo.git({"update-ref", "refs/remotes/origin/gone", remoteOnly});
    repo.git({"checkout", "-q", "main"});
  }

  GitResult<RevisionList> read(bool topo = true, bool reflog = false) {
    JobProgress progress;
    return GetRevisionsGitCommand::execute(repo.module(), topo, reflog, progress);
  }

  TempRepository repo;
  QString root, side, mainline, merge, tagged, remoteOnly;
};

TEST_F(RevisionsRepositoryTest, ReadsEverythingReachableFromHeadBranchesRemotesAndTags) {
  auto result = read();
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(shas(result.value()),
            repo.git({"rev-list", "HEAD", "--branches", "--remotes", "--tags", "--topo-order"}).split('\n', Qt::SkipEmptyParts));
  EXPECT_EQ(result.value().size(), 6u);

  auto byDate = read(false);
  ASSERT_TRUE(byDate.isSuccess());
  EXPECT_EQ(shas(byDate.value()),
            repo.git({"rev-list", "HEAD", "--branches", "--remotes", "--tags", "--date-order"}).split('\n', Qt::SkipEmptyParts));

  // The longest list the user allows.
  Preferences::shared().setValue("maxCommitCount", 4);
  auto limited = read();
  Preferences::shared().remove("maxCommitCount");
  ASSERT_TRUE(limited.isSuccess());
  EXPECT_EQ(limited.value().size(), 4u);
}

TEST_F(RevisionsRepositoryTest, ReflogAddsWhatOnlyTheReflogReachesAndEachReadIsTimedAndCancelable) {
  const QString dropped = repo.commitFile("x", "1", "dropped later");
  repo.git({"reset", "-q", "--hard", "HEAD~1"});
  JobProgress progress;
  auto without = GetRevisionsGitCommand::execute(repo.module(), true, false, progress);
  auto with = read(true, true);
  ASSERT_TRUE(without.isSuccess() && with.isSuccess());
  EXPECT_FALSE(shas(without.value()).contains(dropped));
  EXPECT_TRUE(shas(with.value()).contains(dropped));

  int starts = 0, ends = 0;
  for (const auto& event : progress.profileEvents()) {
    if (event.name != "GetRevisionsGitCommand") continue;
    starts += event.type == JobProgress::ProfileEventType::start;
    ends += event.type == JobProgress::ProfileEventType::end;
  }
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(ends, 1);
  JobProgress canceled;
  canceled.cancel();
  EXPECT_TRUE(GetRevisionsGitCommand::execute(repo.module(), true, false, canceled).isError<Error::Canceled>());
}

TEST(RevisionsFailureTest, EmptyRepositoryFailsAndLongHistoryStreamsAndStopsASearchAtAThousand) {
  TempRepository empty;
  JobProgress progress;
  EXPECT_TRUE(GetRevisionsGitCommand::execute(empty.module(), true, false, progress).isError<Error::GitUnknownError>());
  const GitModule gone{empty.path() + "/missing", empty.path() + "/missing/.git", std::nullopt};
  EXPECT_TRUE(GetRevisionsGitCommand::execute(gone, true, false, progress).isError<Error::GitWorkingDirectoryNotExists>());

  // 1100 commits pass through many reader chunks; the count and order hold. A search that
  // matches them all gives the first thousand.
  TempRepository big;
  importLinearHistory(big, 1100, "match ");
  auto result = GetRevisionsGitCommand::execute(big.module(), true, false, progress);
  ASSERT_TRUE(result.isSuccess());
  ASSERT_EQ(result.value().size(), 1100u);
  EXPECT_EQ(result.value().front()->authorTime(), 1600001100);
  EXPECT_TRUE(result.value().back()->parents().empty());
  QStringList found;
  ASSERT_TRUE(RevisionSearchGitCommand::execute(
                  big.module(), {RevisionSearchType::message, RevisionSearchScope::currentBranch, "MATCH"},
                  [&](RevisionWithFiles match) { found << match.revision->message(); }, nullptr)
                  .isSuccess());
  EXPECT_EQ(found.size(), RevisionSearchGitCommand::maxCount);
  EXPECT_EQ(found.front(), "match 1100");
}

TEST_F(RevisionsRepositoryTest, StashOnAMergeKeepsOneParentAndNamesFollowTheReflog) {
  auto none = GetStashesGitCommand::execute(repo.module());
  ASSERT_TRUE(none.isSuccess());  // no refs/stash yet
  EXPECT_TRUE(none.value().empty());

  repo.writeFile("a", "dirty 1");
  repo.git({"stash", "push", "-q", "-m", "first"});
  repo.writeFile("a", "dirty 2");
  repo.writeFile("untracked", "u");
  repo.git({"stash", "push", "-q", "-u", "-m", "second"});  // three parents: HEAD, index, untracked

  auto result = GetStashesGitCommand::execute(repo.module());
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  const StashRevisionList& stashes = result.value();
  ASSERT_EQ(stashes.size(), 2u);
  EXPECT_EQ(stashes[0]->reflogName(), "stash@{0}");
  EXPECT_EQ(stashes[0]->message(), "On main: second");
  EXPECT_EQ(stashes[1]->reflogName(), "stash@{1}");
  for (const auto& stash : stashes) {
    ASSERT_EQ(stash->parents().size(), 1u);
    EXPECT_EQ(stash->parents()[0].toString(), merge);
  }
  EXPECT_EQ(stashes[0]->sha().toString(), repo.git({"rev-parse", "stash@{0}"}).trimmed());

  // A linked work tree sees the same stashes, kept in the common Git directory.
  const QString linked = repo.path() + "-linked";
  repo.git({"worktree", "add", "-q", linked, "side"});
  const GitModule linkedModule{linked, repo.gitDir() + "/worktrees/repo-linked", std::nullopt};
  auto shared = GetStashesGitCommand::execute(linkedModule);
  ASSERT_TRUE(shared.isSuccess());
  EXPECT_EQ(shared.value().size(), 2u);
}

TEST_F(RevisionsRepositoryTest, DetailsAndInfosReadTheWholeMessage) {
  // A message holding the separator can't be split reliably; it fails cleanly.
  repo.git({"commit", "-q", "--amend", "-m", "Subject line\n\nA message that holds ±. itself"});
  ASSERT_TRUE(GetRevisionDetailsGitCommand::execute(repo.module(), repo.headSha()).isError<Error::CannotParse>());

  // The amended merge keeps its author date; the committer date is the amend's. The
  // body holds the separator of the info read.
  repo.git({"commit", "-q", "--amend", "-m", "Subject line\n\nBody — ünïcode #!_"});
  const QString amended = repo.headSha();
  const auto result = GetRevisionDetailsGitCommand::execute(repo.module(), amended);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  const QString email = repo.git({"config", "user.email"}).trimmed();
  EXPECT_EQ(result.value(), (RevisionDetails{amended,
                                             "Jelv Test",
                                             email,
                                             QDateTime::fromSecsSinceEpoch(1500000200),
                                             "Jelv Test",
                                             email,
                                             result.value().committerDate,
                                             {mainline, side},
                                             "Subject line\n\nBody — ünïcode #!_\n"}));
  EXPECT_NE(result.value().committerDate, result.value().authorDate);
  EXPECT_EQ(GetRevisionInfosGitCommand::execute(repo.module(), {amended, root}).value(),
            (std::vector<RevisionInfo>{{amended, "Jelv Test", QDateTime::fromSecsSinceEpoch(1500000200), "Subject line\n\nBody — ünïcode #!_\n"},
                                       {root, "Jelv Test", QDateTime::fromSecsSinceEpoch(1500000000), "root\n"}}));

  auto missing = GetRevisionDetailsGitCommand::execute(repo.module(), QString(40, QLatin1Char('0')));
  EXPECT_TRUE(missing.isError<Error::GitUnknownError>());
}

TEST(RevisionDetailsTest, ParseRejectsWrongShapes) {
  const QString good = QStringList{"sha", "A", "a@x", "1", "C", "c@x", "2", "p1 p2 ", "msg\n"}.join("±.");
  auto parsed = GetRevisionDetailsGitCommand::parse(good);
  ASSERT_TRUE(parsed.isSuccess());
  EXPECT_EQ(parsed.value().parents, (QStringList{"p1", "p2"}));
  EXPECT_EQ(parsed.value().committerDate.toSecsSinceEpoch(), 2);

  const QString eight = QStringList{"sha", "A", "a@x", "1", "C", "c@x", "2", "p1"}.join("±.");
  auto wrong = GetRevisionDetailsGitCommand::parse(eight);
  ASSERT_TRUE(wrong.isError<Error::CannotParse>());
  EXPECT_EQ(wrong.errorAs<Error::CannotParse>()->error, "Cannot parse revision details output: '" + eight + "'.");

  const QString badDate = QStringList{"sha", "A", "a@x", "1", "C", "c@x", "two", "", ""}.join("±.");
  auto dates = GetRevisionDetailsGitCommand::parse(badDate);
  ASSERT_TRUE(dates.isError<Error::CannotParse>());
  EXPECT_EQ(dates.errorAs<Error::CannotParse>()->error, "Cannot parse revision details dates.");
}

TEST(RevisionInfoTest, ParseLogsAndDropsBadRecords) {
  LogCapture log;
  EXPECT_FALSE(RevisionInfo::parse("sha#!_author#!_1"));
  EXPECT_TRUE(log.contains("Cannot parse revision info in 'sha#!_author#!_1'"));
  EXPECT_FALSE(RevisionInfo::parse("sha#!_author#!_soon#!_msg"));
  EXPECT_TRUE(log.contains("Cannot parse date in 'sha#!_author#!_soon#!_msg'"));
  EXPECT_EQ(RevisionInfo::parse("sha#!_author#!_12#!_"), (RevisionInfo{"sha", "author", QDateTime::fromSecsSinceEpoch(12), ""}));
}

}  // namespace
