// Many jobs update their progress while the user-interface side polls and cancels.
// Run under ThreadSanitizer (JELV_TSAN), these also prove the lock order: a path that
// took a progress's lock before the queue's, or nested a job's lock with a progress's,
// is reported as a lock-order inversion. Run the program with
// TSAN_OPTIONS=die_after_fork=0: other tests of it start git from a threaded process.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QThread>
#include <array>
#include <atomic>

#include "Jobs/JobActivityList.h"
#include "Jobs/JobQueue.h"
#include "Jobs/StatusBarDisplay.h"
#include "support/LogCapture.h"

TEST(JobConcurrency, PollingCancellingAndSchedulingWhileJobsRun) {
  LogCapture log;  // keeps the console quiet and exercises the logger from all threads
  JobQueue queue;
  std::array<std::atomic<int>, 6> cancelActions{};
  std::vector<std::shared_ptr<Job>> all;

  auto makeWorker = [&](int n) {
    auto job = Job::make(QStringLiteral("worker %1").arg(n), n % 3 ? Job::Show::everywhere() : Job::Show::none(),
                         n % 2 ? Job::ProgressType::progress : Job::ProgressType::infinite, [&cancelActions, n](JobProgress& p) {
                           p.setCancelationAction([&cancelActions, n] { ++cancelActions[n]; });
                           p.startGroup("work");
                           for (int step = 0; step < 2000 && !p.isCanceled(); ++step) {
                             p.update(step / 20.0, QStringLiteral("step %1").arg(step), JobProgressState::inProgress);
                             p.parseGitProgress(QStringLiteral("Receiving objects: %1% (x)\r").arg(step % 100));
                             if (step % 50 == 0) p.appendOutput(QStringLiteral("line %1").arg(step));
                             p.start("step");
                             p.end("step");
                             if (n % 4 == 0) QThread::usleep(50);
                           }
                           p.endGroup("work");
                           // One hold of the lock: a cancel arriving now is not overwritten.
                           p.setState(JobProgressState::succeeded);
                         });
    all.push_back(job);
    queue.schedule(job);
  };

  // One round: six workers of every kind, polled while they run, then one cancel.
  JobActivityList rows;
  for (int n = 0; n < 6; ++n) makeWorker(n);
  for (int poll = 0; poll < 20; ++poll) {
    const auto history = queue.userJobs();
    StatusBarDisplay::choose(history, QDateTime::currentDateTime(), "repo: main");
    for (int index : rows.tick(history)) rows.items()[index]->markDrawn();
    queue.activeJobsCount();
    QThread::usleep(200);
  }
  queue.cancelAllTasks();
  ASSERT_TRUE(queue.waitForDone(60000));

  EXPECT_EQ(queue.activeJobsCount(), 0);
  int actions = 0;
  for (size_t n = 0; n < all.size(); ++n) {
    const auto& job = all[n];
    ASSERT_EQ(job->status(), Job::Status::finished) << job->name().toStdString();
    const auto state = job->progress().state();
    EXPECT_TRUE(state == JobProgressState::succeeded || state == JobProgressState::canceled) << job->name().toStdString();
    EXPECT_LE(cancelActions[n].load(), 1) << job->name().toStdString();
    actions += cancelActions[n].load();
    const auto events = job->progress().profileEvents();
    ASSERT_GE(events.size(), 2u);
    EXPECT_EQ(events.front().type, JobProgress::ProfileEventType::startGroup);
    EXPECT_EQ(events.back().type, JobProgress::ProfileEventType::endGroup);
  }
  EXPECT_GT(actions, 0);
  for (int index : rows.tick(queue.userJobs())) rows.items()[index]->markDrawn();
  for (const auto& item : rows.items()) EXPECT_FALSE(item->isRunning);
}
