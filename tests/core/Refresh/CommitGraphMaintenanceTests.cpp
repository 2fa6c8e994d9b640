// The background write of git's commit-graph on real repositories.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include "Git/Commands/Repository/WriteCommitGraphGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Repository/CommitGraphMaintenance.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

constexpr int kLarge = CommitGraphMaintenance::minimumCommitCount + 1;

class CommitGraphMaintenanceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    repo.commitFile("a.txt", "1\n", "first");
    repo.commitFile("a.txt", "2\n", "second");
    Preferences::shared().remove("keepCommitGraphUpToDate");
    Preferences::shared().remove("commitGraphChangedPaths");
  }
  void TearDown() override {
    Preferences::shared().remove("keepCommitGraphUpToDate");
    Preferences::shared().remove("commitGraphChangedPaths");
  }
  QString chain() const { return repo.gitDir() + "/objects/info/commit-graphs/commit-graph-chain"; }
  bool runIfNeeded(int commits) {
    auto job = CommitGraphMaintenance::scheduleIfNeeded(repo.module(), commits, queue);
    EXPECT_TRUE(queue->waitForDone(30000));
    return job != nullptr;
  }

  TempRepository repo;
  std::shared_ptr<JobQueue> queue = std::make_shared<JobQueue>();
};

TEST_F(CommitGraphMaintenanceTest, ALargeHistoryGetsItsGraphWrittenOnceUntilAFetchBringsAPack) {
  EXPECT_TRUE(Preferences::shared().keepCommitGraphUpToDate());  // on unless the user turns it off
  EXPECT_TRUE(CommitGraphMaintenance::isBehind(repo.module()));
  EXPECT_FALSE(runIfNeeded(CommitGraphMaintenance::minimumCommitCount));  // small histories are left alone
  // Never when turned off, nor while another git holds the lock.
  Preferences::shared().setKeepCommitGraphUpToDate(false);
  EXPECT_FALSE(runIfNeeded(kLarge));
  Preferences::shared().setKeepCommitGraphUpToDate(true);
  QFile lock(repo.gitDir() + "/index.lock");
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
  lock.close();
  EXPECT_TRUE(CommitGraphMaintenance::isLocked(repo.module()));
  runIfNeeded(kLarge);
  EXPECT_FALSE(QFileInfo::exists(chain()));
  QFile::remove(lock.fileName());
  EXPECT_FALSE(CommitGraphMaintenance::isLocked(repo.module()));

  EXPECT_TRUE(runIfNeeded(kLarge));
  ASSERT_TRUE(QFileInfo::exists(chain()));
  // git reads and checks the file it finds.
  int status = -1;
  repo.git({"commit-graph", "verify"}, true, &status);
  EXPECT_EQ(status, 0);
  EXPECT_FALSE(CommitGraphMaintenance::isBehind(repo.module()));
  EXPECT_FALSE(runIfNeeded(kLarge));

  // A newer pack, as a fetch leaves: behind again, and the next write catches up.
  repo.commitFile("a.txt", "3\n", "third");
  QTest::qWait(1100);  // file times are compared to the second on some file systems
  repo.git({"repack", "-q", "-d"});
  EXPECT_TRUE(CommitGraphMaintenance::isBehind(repo.module()));
  // Path filters are a choice: the graph written with them carries their chunks, "BIDX" and "BDAT".
  EXPECT_FALSE(WriteCommitGraphGitCommand::arguments(false).contains("--changed-paths"));
  Preferences::shared().setCommitGraphChangedPaths(true);
  EXPECT_TRUE(runIfNeeded(kLarge));
  EXPECT_FALSE(CommitGraphMaintenance::isBehind(repo.module()));
  EXPECT_EQ(repo.git({"rev-list", "--count", "HEAD"}).trimmed(), "3");
  QFile chainFile(chain());
  ASSERT_TRUE(chainFile.open(QIODevice::ReadOnly));
  const QString newest = QString::fromLatin1(chainFile.readAll().trimmed().split('\n').last());
  QFile graph(repo.gitDir() + "/objects/info/commit-graphs/graph-" + newest + ".graph");
  ASSERT_TRUE(graph.open(QIODevice::ReadOnly));
  const QByteArray bytes = graph.readAll();
  EXPECT_TRUE(bytes.contains("BIDX") && bytes.contains("BDAT"));
}

}  // namespace
