// What a refresh reads again on its own, and what it must not throw away: changes made
// by other programs, an unborn HEAD beside other branches, git's reason for a failure,
// and the state kept by a refresh of the changed files alone.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTest>
#include <QThread>

#include "Git/Commands/Repository/RefreshRepositoryDataGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "LaunchRecorder.h"
#include "Repository/RepositoryController.h"
#include "support/TempRepository.h"

namespace {

class RefreshRules : public ::testing::Test {
 protected:
  void SetUp() override { repo.commitFile("a.txt", "one\n", "first"); }

  GitResult<RepositoryDataPtr> refresh(const RepositoryDataPtr& old, Subdomain subdomains) {
    JobProgress progress;
    return RefreshRepositoryDataGitCommand::execute(repo.module(), old, subdomains, {}, progress);
  }
  RepositoryDataPtr first() {
    auto result = refresh(nullptr, Subdomain::none());
    EXPECT_TRUE(result.isSuccess());
    return result ? result.value() : nullptr;
  }

  TempRepository repo;
};

}  // namespace

// Submodules follow ".gitmodules" and Git Flow follows the config file, whatever the
// bits of the refresh that comes next.
TEST_F(RefreshRules, ASubmoduleAndGitFlowAddedOutsideAreSeenByTheNextRefresh) {
  TempRepository library(true, QStringLiteral("library"));
  library.commitFile("lib.txt", "lib\n", "library");
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  ASSERT_TRUE(data->submodules.empty());
  ASSERT_FALSE(data->gitFlowSettings.has_value());

  QThread::msleep(10);  // the file times must move
  repo.git({"-c", "protocol.file.allow=always", "submodule", "add", "-q", library.path(), "lib"});
  for (const char* entry : {"gitflow.branch.master=main", "gitflow.branch.develop=develop", "gitflow.prefix.feature=feature/",
                            "gitflow.prefix.release=release/", "gitflow.prefix.hotfix=hotfix/", "gitflow.prefix.versiontag="}) {
    const QStringList pair = QString::fromLatin1(entry).split(QLatin1Char('='));
    repo.git({"config", pair[0], pair[1]});
  }

  auto next = refresh(data, Subdomain::localBranches());
  ASSERT_TRUE(next.isSuccess());
  ASSERT_EQ(next.value()->submodules.size(), 1u);
  ASSERT_TRUE(next.value()->gitFlowSettings.has_value());
  EXPECT_EQ(next.value()->gitFlowSettings->developBranch, QStringLiteral("develop"));

  // Untouched files are not read again.
  LaunchRecorder launches;
  auto again = refresh(next.value(), Subdomain::submodules() | Subdomain::gitFlowSettings());
  EXPECT_TRUE(again.isError<Error::NoChanges>());
  EXPECT_EQ(launches.count("submodule") + launches.count("config"), 0) << launches.subcommands().join(' ').toStdString();
}

TEST_F(RefreshRules, NewIssueTrackerRulesAreNotTakenForNoChange) {
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  repo.writeFile(".issuetracker", "[issuetracker \"Jira\"]\n\tregex = \"PROJ-(\\\\d+)\"\n\turl = \"https://jira.example.com/browse/PROJ-$1\"\n");
  auto next = refresh(data, Subdomain::bugTrackerSettings());
  ASSERT_TRUE(next.isSuccess()) << (next ? "" : describe(next.error()).toStdString());
  ASSERT_EQ(next.value()->bugtrackers.bugtrackers.size(), 1u);
  EXPECT_EQ(next.value()->bugtrackers.bugtrackers[0]->name, QStringLiteral("Jira"));

  // The same rules read again are no change.
  EXPECT_TRUE(refresh(next.value(), Subdomain::bugTrackerSettings()).isError<Error::NoChanges>());
}

TEST_F(RefreshRules, AnUnbornHeadBesideOtherBranchesShowsTheirHistory) {
  repo.commitFile("b.txt", "two\n", "second");
  repo.git({"checkout", "-q", "--orphan", "fresh"});
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  EXPECT_FALSE(data->references.head.has_value());
  ASSERT_TRUE(data->revisions);
  EXPECT_EQ(data->revisions->size(), 2u);

  // A repository without any commit has no history and no failure.
  TempRepository empty(true, QStringLiteral("empty"));
  JobProgress progress;
  auto none = RefreshRepositoryDataGitCommand::execute(empty.module(), nullptr, Subdomain::none(), {}, progress);
  ASSERT_TRUE(none.isSuccess());
  EXPECT_TRUE(!none.value()->revisions || none.value()->revisions->empty());
}

TEST_F(RefreshRules, AFailedLogGivesGitsOwnReason) {
  const QString second = repo.commitFile("b.txt", "two\n", "second");
  const QString parent = repo.git({"rev-parse", "HEAD~1"}).trimmed();
  // The parent commit's object goes missing.
  ASSERT_TRUE(QFile::remove(repo.gitDir() + "/objects/" + parent.left(2) + "/" + parent.mid(2)));

  JobProgress progress;
  auto revisions = GetRevisionsGitCommand::execute(repo.module(), false, false, progress);
  ASSERT_TRUE(revisions.isFailure());
  const QString text = describe(revisions.error());
  EXPECT_TRUE(text.contains(parent.left(7)) || text.contains(QStringLiteral("Could not read"))) << text.toStdString();
  EXPECT_FALSE(text.contains(QStringLiteral("exited with status"))) << text.toStdString();
}

// A repository that keeps its references in a reftable has no reflog files: git is asked.
TEST_F(RefreshRules, StashesAreAskedOfGitWhenReferencesLiveInAReftable) {
  LaunchRecorder launches;
  EXPECT_TRUE(GetStashesGitCommand::execute(repo.module()).value().empty());
  EXPECT_EQ(launches.count("log"), 0);
  ASSERT_TRUE(QDir(repo.gitDir()).mkdir(QStringLiteral("reftable")));
  EXPECT_TRUE(GetStashesGitCommand::execute(repo.module()).value().empty());
  EXPECT_EQ(launches.count("log"), 1);
}

TEST_F(RefreshRules, ARefreshOfTheChangedFilesAloneKeepsTheState) {
  auto queue = std::make_shared<JobQueue>();
  RepositoryController controller{repo.module(), queue};
  const auto idle = [&] { return QTest::qWaitFor([&] { return !controller.isRefreshing(); }, 30000); };
  controller.refresh();
  ASSERT_TRUE(idle());
  ASSERT_TRUE(controller.repositoryStatus());
  ASSERT_TRUE(controller.repositoryStatus()->repositoryState.is<RepositoryState::Ok>());

  // A revert stopped half-way, and a file changed.
  repo.writeFile(".git/REVERT_HEAD", (repo.headSha() + "\n").toUtf8());
  repo.writeFile("a.txt", "changed\n");
  controller.refreshRepository(Subdomain::changedFiles());
  ASSERT_TRUE(idle());
  EXPECT_EQ(controller.repositoryStatus()->changedFilesCount, 1);
  EXPECT_TRUE(controller.repositoryStatus()->repositoryState.is<RepositoryState::Ok>());

  controller.refreshRepository(Subdomain::repositoryState());
  ASSERT_TRUE(idle());
  EXPECT_TRUE(controller.repositoryStatus()->repositoryState.is<RepositoryState::RevertInProgress>());
  ASSERT_TRUE(queue->waitForDone(10000));
}
