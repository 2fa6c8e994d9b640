// Outside changes: git run in a terminal while a controller has the repository open.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QSignalSpy>
#include <QTest>

#include "Git/Commands/RunGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Repository/OutsideChange.h"
#include "Repository/RepositoryController.h"
#include "Repository/RepositoryStatusManager.h"
#include "Repository/RepositoryWatcher.h"
#include "support/TempRepository.h"

namespace {

class RepositoryWatcherTest : public ::testing::Test {
 protected:
  void SetUp() override {
    repo.commitFile("a.txt", "one\n", "first");
    repo.commitFile("src/b.txt", "b\n", "second");
    controller.refresh();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !controller.isRefreshing(); }, 30000));
    controller.watchForOutsideChanges();
    ASSERT_TRUE(QTest::qWaitFor([&] { return controller.isWatchingWorkTree(); }, 10000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return queue->activeJobsCount() == 0; }, 10000));
  }

  // Waits for what a terminal command should lead to, without any refresh asked for.
  bool seen(const std::function<bool()>& shown) {
    return QTest::qWaitFor([&] { return !controller.isRefreshing() && shown(); }, 5000);
  }

  TempRepository repo;
  std::shared_ptr<JobQueue> queue = std::make_shared<JobQueue>();
  RepositoryController controller{repo.module(), queue};
};

TEST(OutsideChange, FilesOfTheGitDirectoryAndTheWorkTree) {
  const struct {
    const char* path;
    Subdomain expected;
  } rows[] = {
      {"HEAD", Subdomain::head() | Subdomain::localBranches() | Subdomain::repositoryStatus()},
      {"logs/HEAD", Subdomain::head()},
      {"index", Subdomain::changedFiles()},
      {"refs/heads/feature/x", Subdomain::localBranches() | Subdomain::revisions()},
      {"refs/heads/main.lock", Subdomain::none()},
      {"refs/remotes/origin/main", Subdomain::remoteBranches() | Subdomain::revisions()},
      {"refs/tags/v1", Subdomain::tags() | Subdomain::revisions()},
      {"packed-refs", Subdomain::references() | Subdomain::revisions()},
      {"refs/stash", Subdomain::stashes()},
      {"logs/refs/stash", Subdomain::stashes()},
      {"MERGE_HEAD", Subdomain::repositoryStatus()},
      {"rebase-merge/done", Subdomain::repositoryStatus()},
      {"config", Subdomain::remotes() | Subdomain::gitFlowSettings() | Subdomain::localBranches()},
      {"hooks/pre-push", Subdomain::gitLfsInitialized()},
      {"jelv-settings", Subdomain::none()},
  };
  for (const auto& row : rows) EXPECT_EQ(OutsideChange::inGitDirectory(QString::fromLatin1(row.path)), row.expected) << row.path;
  EXPECT_EQ(OutsideChange::inWorkTree("src/main.c"), Subdomain::changedFiles());
  EXPECT_EQ(OutsideChange::inWorkTree(".gitmodules"), Subdomain::submodules() | Subdomain::changedFiles());
  EXPECT_EQ(OutsideChange::inWorkTree(".git/index"), Subdomain::none());
}

TEST_F(RepositoryWatcherTest, TerminalCommandsShowUpByThemselves) {
  const auto data = [&] { return controller.repositoryData(); };
  repo.git({"branch", "topic"});
  EXPECT_TRUE(seen([&] { return data()->references.referencesByFullPath.contains("refs/heads/topic"); }));

  repo.git({"checkout", "-q", "topic"});
  EXPECT_TRUE(seen([&] { return data()->references.activeBranch && data()->references.activeBranch->name == QLatin1String("topic"); }));

  const QString committed = repo.commitFile("src/c.txt", "c\n", "on topic");
  EXPECT_TRUE(seen([&] { return data()->revisions->front()->sha().toString() == committed; }));

  repo.writeFile("a.txt", "edited in an editor\n");
  EXPECT_TRUE(seen([&] { return controller.repositoryStatus()->changedFilesCount == 1; }));

  repo.git({"stash", "-q"});
  EXPECT_TRUE(seen([&] { return data()->stashes.size() == 1 && controller.repositoryStatus()->changedFilesCount == 0; }));

  // The status timer leaves a watched work tree alone.
  RepositoryStatusManager manager;
  manager.setRepository(&controller);
  EXPECT_FALSE(manager.tick(QDateTime::currentDateTimeUtc().addSecs(3600)));
}

TEST_F(RepositoryWatcherTest, ABurstOfChangesGivesOneRefresh) {
  QSignalSpy changed(controller.watcher(), &RepositoryWatcher::changed);
  // Ten branches, one git run each, then quiet.
  for (int i = 0; i < 10; ++i) repo.git({"branch", QStringLiteral("burst%1").arg(i)});
  QTest::qWait(RepositoryWatcher::longestWaitMilliseconds + 600);
  // A burst longer than the longest wait may be cut once; never once per branch.
  ASSERT_GE(changed.count(), 1);
  EXPECT_LE(changed.count(), 2);
  const auto bits = changed.first().first().value<Subdomain>();
  EXPECT_TRUE(bits.contains(Subdomain::localBranches() | Subdomain::revisions()));
  EXPECT_TRUE(seen([&] { return controller.repositoryData()->references.referencesByFullPath.contains("refs/heads/burst9"); }));
}

TEST_F(RepositoryWatcherTest, WhatTheApplicationsOwnOperationsChangeIsNotNews) {
  QSignalSpy changed(controller.watcher(), &RepositoryWatcher::changed);
  const GitModule module = repo.module();
  queue->schedule(
      Job::make("Create Branch", Job::Show::everywhere(), Job::ProgressType::infinite, [module](JobProgress& progress) {
        runGitCommand(module, {"branch", "ours"}, &progress);
        runGitCommand(module, {"checkout", "-q", "ours"}, &progress);
      }));
  ASSERT_TRUE(queue->waitForDone(10000));
  QTest::qWait(RepositoryWatcher::longestWaitMilliseconds + 600);
  EXPECT_EQ(changed.count(), 0);

  // The same command from outside, once the operation is over, is seen.
  repo.git({"branch", "theirs"});
  EXPECT_TRUE(QTest::qWaitFor([&] { return changed.count() == 1; }, 3000));
}

}  // namespace
