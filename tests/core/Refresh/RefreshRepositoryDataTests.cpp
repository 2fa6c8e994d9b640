// The data refresh against real repositories: what it reads again, what it hands on,
// when it reports that nothing changed, and what it must not throw away.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QThread>

#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "Git/Commands/Repository/RefreshRepositoryDataGitCommand.h"
#include "Git/Commands/Repository/RefreshRepositoryReferencesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Jobs/JobProgress.h"
#include "LaunchRecorder.h"
#include "Models/BisectMark.h"
#include "support/TempRepository.h"

namespace {

const QDateTime kDate = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);

ReferencePtr local(const QString& name, const QString& sha = "a1") {
  return std::make_shared<const LocalBranch>(sha, "refs/heads/" + name, name, name, kDate, false, std::nullopt);
}
ReferencePtr remote(const QString& name) {
  return std::make_shared<const RemoteBranch>("b2", "refs/remotes/origin/" + name, name, "origin/" + name, kDate, "origin");
}
ReferencePtr tag(const QString& name) {
  return std::make_shared<const Tag>("c3", "refs/tags/" + name, name, name, kDate, std::nullopt);
}
ReferencePtr bisect(const QString& name) {
  return std::make_shared<const BisectMark>("d4", "refs/bisect/" + name, name, name, kDate, true);
}

QStringList fullReferences(const ReferenceList& refs) {
  QStringList names;
  for (const auto& ref : refs) names << ref->fullReference;
  return names;
}

}  // namespace

TEST(Consolidate, KeepsWhatWasNotReadAndReplacesWhatWas) {
  const ReferenceList old = {bisect("good-1"), local("dev"), local("main"), remote("main"), tag("v1")};

  // Only tags were read: v1 was deleted, v2 is new, everything else is the old object.
  const ReferenceList afterTags =
      RefreshRepositoryReferencesGitCommand::consolidate(old, {tag("v2")}, Subdomain::tags());
  EXPECT_EQ(fullReferences(afterTags), (QStringList{"refs/bisect/good-1", "refs/heads/dev", "refs/heads/main",
                                                     "refs/remotes/origin/main", "refs/tags/v2"}));
  EXPECT_EQ(afterTags[1], old[1]);
  EXPECT_EQ(afterTags[3], old[3]);

  // Local branches were read: "dev" is gone and "main" moved.
  const ReferencePtr movedMain = local("main", "ff");
  const ReferenceList afterBranches =
      RefreshRepositoryReferencesGitCommand::consolidate(old, {movedMain}, Subdomain::localBranches());
  EXPECT_EQ(fullReferences(afterBranches),
            (QStringList{"refs/bisect/good-1", "refs/heads/main", "refs/remotes/origin/main", "refs/tags/v1"}));
  EXPECT_EQ(afterBranches[1], movedMain);

  // A read of every namespace is the whole truth, bisect marks included.
  const ReferenceList fresh = {local("main")};
  EXPECT_EQ(fullReferences(RefreshRepositoryReferencesGitCommand::consolidate(old, fresh, Subdomain::references())),
            QStringList{"refs/heads/main"});
}

class RefreshDataTest : public ::testing::Test {
 protected:
  void SetUp() override { firstSha = repo.commitFile("a.txt", "one\n", "first"); }

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
  QString firstSha;
};

TEST_F(RefreshDataTest, TheFirstReadReadsEverythingWhateverTheBitsAndAnEditedConfigIsReadAgain) {
  LaunchRecorder launches;
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  ASSERT_EQ(data->revisions->size(), 1u);
  EXPECT_EQ(data->references.head, firstSha);
  ASSERT_TRUE(data->references.activeBranch);
  EXPECT_EQ(data->references.activeBranch->name, "main");
  EXPECT_TRUE(data->remotes.empty());
  // Each read once (the Git LFS hook: GitLfsHookAndCancellation).
  EXPECT_EQ(launches.count("for-each-ref"), 1);
  EXPECT_EQ(launches.countEndingWith(GetRemotesGitCommand::arguments()), 1);

  // An edited config is read again (an untouched one is not:
  // ASubmoduleGitFlowAndIssueTrackerRulesAddedOutside...). As a text editor would: the
  // file is rewritten, git isn't involved.
  QThread::msleep(5);
  QByteArray config = repo.readFile(".git/config");
  config += "[remote \"origin\"]\n\turl = https://github.com/owner/project.git\n";
  repo.writeFile(".git/config", config);
  launches.clear();
  auto edited = refresh(data, Subdomain::remotes());
  ASSERT_TRUE(edited.isSuccess());
  ASSERT_EQ(edited.value()->remotes.size(), 1u);
  EXPECT_EQ(edited.value()->remotes[0].name, "origin");
  EXPECT_EQ(launches.countEndingWith(GetRemotesGitCommand::arguments()), 1);
}

TEST_F(RefreshDataTest, ReferencesAreReadByNamespaceAndHeadOnlyWhenItMoved) {
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  repo.git({"branch", "feature"});
  repo.git({"tag", "v1"});

  LaunchRecorder launches;
  auto branches = refresh(data, Subdomain::localBranches());
  ASSERT_TRUE(branches.isSuccess());
  EXPECT_EQ(fullReferences(branches.value()->references.all), (QStringList{"refs/heads/feature", "refs/heads/main"}));
  // The history wasn't asked for: the same list object, and no log read.
  EXPECT_EQ(branches.value()->revisions, data->revisions);
  EXPECT_EQ(launches.count("log"), 0);
  // logs/HEAD didn't move, so HEAD wasn't asked for.
  EXPECT_EQ(launches.count("rev-parse"), 0);
  ASSERT_EQ(launches.count("for-each-ref"), 1);

  // Asking again finds nothing new.
  EXPECT_TRUE(refresh(branches.value(), Subdomain::localBranches()).isError<Error::NoChanges>());

  // A commit from outside moves HEAD; with the history bit the list is read again.
  const QString second = repo.commitFile("a.txt", "two\n", "second");
  launches.clear();
  auto afterCommit = refresh(branches.value(), Subdomain::head() | Subdomain::revisions() | Subdomain::localBranches());
  ASSERT_TRUE(afterCommit.isSuccess());
  EXPECT_EQ(afterCommit.value()->references.head, second);
  EXPECT_EQ(afterCommit.value()->revisions->size(), 2u);
  EXPECT_EQ(launches.count("rev-parse"), 1);
  // The tag of before was never read by a branch-only refresh.
  EXPECT_FALSE(afterCommit.value()->references.reference("refs/tags/v1"));
}

TEST_F(RefreshDataTest, AFilterOfTheActiveBranchFollowsACheckoutAndOthersStay) {
  repo.git({"branch", "feature"});
  repo.git({"branch", "other"});
  GitModuleSettings settings;
  settings.filterReferences = {"refs/heads/main"};
  settings.save(repo.module());
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  EXPECT_EQ(data->references.filtered, QSet<QString>{"refs/heads/main"});

  repo.git({"checkout", "-q", "feature"});
  auto moved = refresh(data, Subdomain::head() | Subdomain::localBranches());
  ASSERT_TRUE(moved.isSuccess());
  EXPECT_EQ(moved.value()->references.filtered, QSet<QString>{"refs/heads/feature"});
  // The refresh thread writes nothing: a draft saved meanwhile on the main thread stays,
  // and the main thread stores the moved filter when it takes the snapshot.
  GitModuleSettings drafted = GitModuleSettings::load(repo.module());
  EXPECT_EQ(drafted.filterReferences, QStringList{"refs/heads/main"});
  drafted.draftMessage = "Work in progress";
  drafted.save(repo.module());
  EXPECT_TRUE(RefreshRepositoryReferencesGitCommand::storeFollowedFilter(repo.module(), &data->references, moved.value()->references,
                                                                          moved.value()->settings.filterReferences));
  EXPECT_EQ(GitModuleSettings::load(repo.module()).filterReferences, QStringList{"refs/heads/feature"});
  EXPECT_EQ(GitModuleSettings::load(repo.module()).draftMessage, "Work in progress");

  // A filter of several branches is the user's choice, not a binding.
  const QStringList chosen{"refs/heads/feature", "refs/heads/other"};
  GitModuleSettings several = GitModuleSettings::load(repo.module());
  several.filterReferences = chosen;
  several.save(repo.module());
  auto reread = refresh(moved.value(), Subdomain::referenceSettings());
  ASSERT_TRUE(reread.isSuccess());
  repo.git({"checkout", "-q", "main"});
  auto back = refresh(reread.value(), Subdomain::head() | Subdomain::localBranches());
  ASSERT_TRUE(back.isSuccess());
  EXPECT_EQ(back.value()->references.activeBranch->name, "main");
  EXPECT_EQ(GitModuleSettings::load(repo.module()).filterReferences, chosen);
  EXPECT_FALSE(RefreshRepositoryReferencesGitCommand::storeFollowedFilter(repo.module(), &reread.value()->references,
                                                                           back.value()->references, back.value()->settings.filterReferences));
  // A filter the user changed after the refresh had read it is not overwritten.
  EXPECT_FALSE(RefreshRepositoryReferencesGitCommand::storeFollowedFilter(repo.module(), &data->references, moved.value()->references,
                                                                           moved.value()->settings.filterReferences));
  EXPECT_EQ(GitModuleSettings::load(repo.module()).filterReferences, chosen);
}

TEST_F(RefreshDataTest, GitLfsHookAndCancellation) {
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  ASSERT_FALSE(data->gitLfsInitialized);
  repo.writeFile(".git/hooks/pre-push", "#!/bin/sh\ncommand -v git-lfs >/dev/null || exit 2\ngit lfs pre-push \"$@\"\n");
  auto withHook = refresh(data, Subdomain::none());
  ASSERT_TRUE(withHook.isSuccess());
  EXPECT_TRUE(withHook.value()->gitLfsInitialized);

  JobProgress canceled;
  canceled.cancel();
  EXPECT_TRUE(RefreshRepositoryDataGitCommand::execute(repo.module(), data, Subdomain::all(), {}, canceled).isError<Error::Canceled>());
}

TEST_F(RefreshDataTest, AnUnbornHeadHasNoHeadAndShowsTheOtherBranchesHistory) {
  TempRepository empty(true, "empty");
  JobProgress progress;
  auto result = RefreshRepositoryDataGitCommand::execute(empty.module(), nullptr, Subdomain::all(), {}, progress);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_FALSE(result.value()->references.head);
  EXPECT_TRUE(result.value()->revisions->empty());

  repo.commitFile("b.txt", "two\n", "second");
  repo.git({"checkout", "-q", "--orphan", "fresh"});
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  EXPECT_FALSE(data->references.head.has_value());
  EXPECT_EQ(data->revisions->size(), 2u);
}

// Submodules follow ".gitmodules" and Git Flow follows the config file, whatever the
// bits of the refresh that comes next; issue-tracker rules follow their file.
TEST_F(RefreshDataTest, ASubmoduleGitFlowAndIssueTrackerRulesAddedOutsideAreSeenByTheNextRefresh) {
  TempRepository library(true, "library");
  library.commitFile("lib.txt", "lib\n", "library");
  const RepositoryDataPtr data = first();
  ASSERT_TRUE(data);
  ASSERT_TRUE(data->submodules.empty());
  ASSERT_FALSE(data->gitFlowSettings.has_value());

  QThread::msleep(10);  // the file times must move
  repo.git({"-c", "protocol.file.allow=always", "submodule", "add", "-q", library.path(), "lib"});
  for (const QString entry : {"branch.master=main", "branch.develop=develop", "prefix.feature=feature/",
                              "prefix.release=release/", "prefix.hotfix=hotfix/", "prefix.versiontag="})
    repo.git({"config", "gitflow." + entry.section('=', 0, 0), entry.section('=', 1)});

  auto next = refresh(data, Subdomain::localBranches());
  ASSERT_TRUE(next.isSuccess());
  ASSERT_EQ(next.value()->submodules.size(), 1u);
  ASSERT_TRUE(next.value()->gitFlowSettings.has_value());
  EXPECT_EQ(next.value()->gitFlowSettings->developBranch, "develop");

  // Untouched files are not read again.
  LaunchRecorder launches;
  auto again = refresh(next.value(), Subdomain::submodules() | Subdomain::gitFlowSettings() | Subdomain::remotes());
  EXPECT_TRUE(again.isError<Error::NoChanges>());
  EXPECT_EQ(launches.count("submodule") + launches.count("config"), 0) << launches.subcommands().join(' ').toStdString();

  // New issue-tracker rules are a change of their own; the same rules read again are none.
  repo.writeFile(".issuetracker", "[issuetracker \"Jira\"]\n\tregex = \"PROJ-(\\\\d+)\"\n\turl = \"https://jira.example.com/browse/PROJ-$1\"\n");
  auto rules = refresh(next.value(), Subdomain::bugTrackerSettings());
  ASSERT_TRUE(rules.isSuccess()) << (rules ? "" : describe(rules.error()).toStdString());
  ASSERT_EQ(rules.value()->bugtrackers.bugtrackers.size(), 1u);
  EXPECT_EQ(rules.value()->bugtrackers.bugtrackers[0]->name, "Jira");
  EXPECT_TRUE(refresh(rules.value(), Subdomain::bugTrackerSettings()).isError<Error::NoChanges>());
}

TEST_F(RefreshDataTest, AFailedLogGivesGitsOwnReason) {
  const QString second = repo.commitFile("b.txt", "two\n", "second");
  const QString parent = repo.git({"rev-parse", "HEAD~1"}).trimmed();
  // The parent commit's object goes missing.
  ASSERT_TRUE(QFile::remove(repo.gitDir() + "/objects/" + parent.left(2) + "/" + parent.mid(2)));

  JobProgress progress;
  auto revisions = GetRevisionsGitCommand::execute(repo.module(), false, false, progress);
  ASSERT_TRUE(revisions.isFailure());
  const QString text = describe(revisions.error());
  EXPECT_TRUE(text.contains(parent.left(7)) || text.contains("Could not read")) << text.toStdString();
  EXPECT_FALSE(text.contains("exited with status")) << text.toStdString();
}

// A repository that keeps its references in a reftable has no reflog files: git is asked.
TEST_F(RefreshDataTest, StashesAreAskedOfGitWhenReferencesLiveInAReftable) {
  LaunchRecorder launches;
  EXPECT_TRUE(GetStashesGitCommand::execute(repo.module()).value().empty());
  EXPECT_EQ(launches.count("log"), 0);
  ASSERT_TRUE(QDir(repo.gitDir()).mkdir("reftable"));
  EXPECT_TRUE(GetStashesGitCommand::execute(repo.module()).value().empty());
  EXPECT_EQ(launches.count("log"), 1);
}
