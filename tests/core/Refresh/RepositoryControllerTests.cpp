// The controller's refreshes on a real queue and a real repository: snapshots replaced
// on the main thread, the status-only path, and quick successive requests.
#include <gtest/gtest.h>

#include <algorithm>

#include <QSignalSpy>
#include <QTest>

#include "Jobs/JobQueue.h"
#include "LaunchRecorder.h"
#include "Repository/RepositoryController.h"
#include "Repository/RepositoryStatusManager.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

bool waitUntilIdle(const RepositoryController& controller) {
  return QTest::qWaitFor([&] { return !controller.isRefreshing(); }, 30000);
}

std::vector<std::shared_ptr<Job>> refreshJobs(const JobQueue& queue) {
  std::vector<std::shared_ptr<Job>> jobs;
  for (const auto& job : queue.userJobs()) {
    if (job->name() == QLatin1String(RefreshRepositoryCommand::jobName)) jobs.push_back(job);
  }
  return jobs;
}

class RepositoryControllerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    repo.commitFile("a.txt", "one\n", "first");
    controller.refresh();
    ASSERT_TRUE(waitUntilIdle(controller));
    ASSERT_TRUE(controller.repositoryData());
    ASSERT_TRUE(controller.repositoryStatus());
  }

  TempRepository repo;
  std::shared_ptr<JobQueue> queue = std::make_shared<JobQueue>();
  RepositoryController controller{repo.module(), queue};
};

}  // namespace

TEST_F(RepositoryControllerTest, OutsideChangesReachTheNextSnapshotAndQuickRefreshesMerge) {
  const RepositoryDataPtr before = controller.repositoryData();
  EXPECT_EQ(controller.repositoryStatus()->changedFilesCount, 0);

  const QString sha = repo.commitFile("b.txt", "two\n", "second");
  repo.writeFile("untracked.txt", "x\n");
  QSignalSpy dataUpdated(&controller, &RepositoryController::repositoryDataUpdated);
  controller.refresh();
  EXPECT_TRUE(controller.isRefreshing());
  ASSERT_TRUE(waitUntilIdle(controller));

  EXPECT_EQ(dataUpdated.count(), 1);
  EXPECT_EQ(controller.repositoryData()->references.head, sha);
  EXPECT_EQ(controller.repositoryData()->revisions->size(), 2u);
  EXPECT_EQ(controller.repositoryStatus()->changedFilesCount, 1);
  // The snapshot held from before is untouched.
  EXPECT_EQ(before->revisions->size(), 1u);
  EXPECT_NE(before->references.head, sha);

  // Two quick refreshes leave one finished job that honours both.
  const size_t jobsBefore = refreshJobs(*queue).size();
  repo.git({"tag", "v1"});
  repo.writeFile("new.txt", "x\n");

  controller.invalidate(Subdomain::tags());
  controller.invalidate(Subdomain::changedFiles(), RefreshRepositoryCommand::UpdateOrder::statusFirst);
  ASSERT_TRUE(waitUntilIdle(controller));
  ASSERT_TRUE(queue->waitForDone(30000));

  const auto jobs = refreshJobs(*queue);
  ASSERT_EQ(jobs.size(), jobsBefore + 2);
  int succeeded = 0;
  for (size_t i = jobsBefore; i < jobs.size(); ++i) {
    EXPECT_EQ(jobs[i]->status(), Job::Status::finished);
    if (jobs[i]->progress().state() == JobProgressState::succeeded) ++succeeded;
  }
  EXPECT_EQ(succeeded, 1);
  EXPECT_EQ(jobs.back()->progress().state(), JobProgressState::succeeded);
  EXPECT_TRUE(controller.repositoryData()->references.reference("refs/tags/v1"));
  EXPECT_EQ(controller.repositoryStatus()->changedFilesCount, 2);
  EXPECT_EQ(controller.invalidatedSubdomains(), Subdomain::none());
}

TEST(RepositoryController, AFailedReadKeepsTheOldSnapshotAndSaysWhy) {
  QTemporaryDir folder;
  RepositoryController controller(GitModule{folder.path(), folder.path() + "/.git", std::nullopt}, std::make_shared<JobQueue>());
  QSignalSpy failed(&controller, &RepositoryController::refreshFailed);
  controller.refresh();
  ASSERT_TRUE(waitUntilIdle(controller));
  ASSERT_EQ(failed.count(), 1);
  EXPECT_FALSE(failed.at(0).at(0).toString().isEmpty());
  EXPECT_FALSE(controller.repositoryData());
  // Unread bits stay, so the next request tries again.
  EXPECT_TRUE(controller.invalidatedSubdomains().contains(Subdomain::references()));

  RepositoryController noModule(std::nullopt, std::make_shared<JobQueue>());
  noModule.refresh();
  EXPECT_FALSE(noModule.isRefreshing());
}

TEST_F(RepositoryControllerTest, TheStatusManagerRefreshesTheStatusWhenDue) {
  auto& prefs = Preferences::shared();
  prefs.setAutomaticStatusUpdateInterval(15);
  EXPECT_EQ(RepositoryStatusManager::interval(), 15);
  prefs.setAutomaticStatusUpdateInterval(0);
  EXPECT_EQ(RepositoryStatusManager::interval(), 60);
  prefs.remove("automaticStatusUpdateInterval");
  EXPECT_TRUE(RepositoryStatusManager::isDue(std::nullopt, QDateTime::currentDateTimeUtc(), 60));

  RepositoryStatusManager manager;
  EXPECT_FALSE(manager.tick(QDateTime::currentDateTimeUtc()));  // no repository yet
  manager.setRepository(&controller);
  EXPECT_TRUE(manager.isActive());
  // A status read of a refresh, the one at open included, is not read again by the timer.
  controller.refresh();
  ASSERT_TRUE(waitUntilIdle(controller));
  ASSERT_TRUE(manager.lastUpdateTime());
  EXPECT_FALSE(manager.tick());
  const QDateTime read = *manager.lastUpdateTime();

  prefs.setDisableAutomaticStatusUpdate(true);
  EXPECT_FALSE(manager.tick(read.addSecs(60)));
  prefs.setDisableAutomaticStatusUpdate(false);

  repo.writeFile("a.txt", "edited elsewhere\n");
  QSignalSpy statusUpdated(&controller, &RepositoryController::repositoryStatusUpdated);
  EXPECT_FALSE(manager.tick(read.addSecs(59)));
  EXPECT_TRUE(manager.tick(read.addSecs(60)));
  EXPECT_EQ(manager.lastUpdateTime(), read.addSecs(60));
  ASSERT_TRUE(waitUntilIdle(controller));
  EXPECT_EQ(statusUpdated.count(), 1);
  EXPECT_EQ(controller.repositoryStatus()->changedFilesCount, 1);
  manager.setRepository(nullptr);
  EXPECT_FALSE(manager.isActive());
}

TEST(RepositoryController, AStatusAskedForBeforeTheFirstDataStillKnowsTheSubmodules) {
  TempRepository library(true, "library");
  TempRepository app(true, "app");
  library.commitFile("lib.c", "int lib;\n", "Library");
  app.commitFile("main.c", "int main;\n", "App");
  app.git({"submodule", "add", "-q", library.path(), "ext/lib"});
  app.commit("Add submodule");
  app.writeFile("ext/lib/lib.c", "int edited;\n");

  RepositoryController controller{app.module(), std::make_shared<JobQueue>()};
  controller.refresh();
  controller.refreshStatus();  // as a page shown at once asks, while the first read runs
  ASSERT_TRUE(waitUntilIdle(controller));
  ASSERT_TRUE(controller.repositoryStatus());
  const ChangedFileList& files = controller.repositoryStatus()->changedFiles;
  const auto found = std::find_if(files.begin(), files.end(), [](const ChangedFilePtr& f) { return f->path == "ext/lib"; });
  ASSERT_NE(found, files.end());
  EXPECT_NE((*found)->changedSubmodule(), nullptr);
}

TEST_F(RepositoryControllerTest, TheChangedFilesBitAloneRunsOnlyTheStatusReadAndKeepsTheState) {
  const RepositoryDataPtr data = controller.repositoryData();
  ASSERT_TRUE(controller.repositoryStatus()->repositoryState.is<RepositoryState::Ok>());

  // A revert stopped half-way, and a file changed.
  repo.writeFile(".git/REVERT_HEAD", (repo.headSha() + "\n").toUtf8());
  repo.writeFile("a.txt", "changed\n");
  LaunchRecorder launches;
  QSignalSpy dataUpdated(&controller, &RepositoryController::repositoryDataUpdated);
  controller.invalidate(Subdomain::changedFiles());
  ASSERT_TRUE(waitUntilIdle(controller));
  EXPECT_EQ(controller.repositoryStatus()->changedFilesCount, 1);
  // The working tree alone: neither the state nor anything of the data side.
  EXPECT_EQ(launches.subcommands(), (QStringList{"status"}));
  EXPECT_EQ(dataUpdated.count(), 0);
  EXPECT_EQ(controller.repositoryData(), data);
  EXPECT_TRUE(controller.repositoryStatus()->repositoryState.is<RepositoryState::Ok>());

  controller.refreshRepository(Subdomain::repositoryState());
  ASSERT_TRUE(waitUntilIdle(controller));
  EXPECT_TRUE(controller.repositoryStatus()->repositoryState.is<RepositoryState::RevertInProgress>());
  ASSERT_TRUE(queue->waitForDone(10000));
}
