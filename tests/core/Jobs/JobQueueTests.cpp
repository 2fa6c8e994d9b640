#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QThread>
#include <atomic>
#include <latch>
#include <set>
#include <thread>

#include "Git/Process/GitRequest.h"
#include "Jobs/JobQueue.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

namespace {

std::shared_ptr<Job> makeJob(const QString& name, Job::Action action = {}, Job::Show show = Job::Show::everywhere()) {
  return Job::make(name, show, Job::ProgressType::progress, std::move(action));
}

}  // namespace

TEST(Job, IdsCountUpWrapAtOneThousandAndStayDistinctAcrossThreads) {
  std::vector<int> ids;
  for (int i = 0; i < 1001; ++i) ids.push_back(makeJob("j")->id());
  for (int k = 0; k < 1001; ++k) ASSERT_EQ(ids[k], (ids[0] + k) % 1000) << "job " << k;

  // 800 ids drawn at once on 8 threads from a counter of 1000 cannot repeat.
  constexpr int threads = 8, perThread = 100;
  std::vector<std::vector<int>> drawn(threads);
  std::vector<std::thread> workers;
  for (int t = 0; t < threads; ++t) {
    workers.emplace_back([&drawn, t] {
      for (int i = 0; i < perThread; ++i) drawn[t].push_back(makeJob("j")->id());
    });
  }
  for (auto& w : workers) w.join();
  std::set<int> all;
  for (const auto& list : drawn) all.insert(list.begin(), list.end());
  EXPECT_EQ(all.size(), static_cast<size_t>(threads * perThread));
}

TEST(JobQueue, JobsOfOneQueueRunAtTheSameTime) {
  JobQueue queue;
  constexpr int count = 12;  // more than the machine has cores
  std::latch allRunning(count);
  for (int i = 0; i < count; ++i) {
    // Each job waits for all the others: this only ends if none waits for a free thread.
    queue.schedule(makeJob(QStringLiteral("job %1").arg(i), [&](JobProgress&) { allRunning.arrive_and_wait(); }));
  }
  EXPECT_TRUE(queue.waitForDone(10000));
}

TEST(JobQueue, HistoryKeepsTheNewestTwentyNine) {
  JobQueue queue;
  std::vector<std::shared_ptr<Job>> scheduled;
  for (int i = 0; i < 35; ++i) {
    scheduled.push_back(makeJob(QStringLiteral("job %1").arg(i)));
    queue.schedule(scheduled.back());
  }
  ASSERT_TRUE(queue.waitForDone(5000));
  const auto history = queue.userJobs();
  ASSERT_EQ(history.size(), 29u);
  for (size_t i = 0; i < history.size(); ++i) EXPECT_EQ(history[i], scheduled[6 + i]) << "entry " << i;
  // The history holds finished jobs too, and releases what fell out of it.
  EXPECT_EQ(history.front()->status(), Job::Status::finished);
  std::weak_ptr<Job> dropped = scheduled.front();
  scheduled.clear();
  EXPECT_TRUE(dropped.expired());
}

TEST(JobQueue, CancelAllReachesEveryActiveJobWithoutWaiting) {
  LogCapture log;
  JobQueue queue;
  queue.cancelAllTasks();
  EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join(QLatin1Char('\n')).toStdString();

  std::latch started(2);
  std::latch release(1);
  // "Stubborn" ignores the cancel until released; "Polite" polls the state and stops.
  auto stubborn = makeJob("Stubborn", [&](JobProgress&) {
    started.count_down();
    release.wait();
  });
  auto polite = makeJob("Polite", [&](JobProgress& p) {
    started.count_down();
    while (!p.isCanceled()) QThread::msleep(1);
  });
  int actionRuns = 0;
  polite->progress().setCancelationAction([&] { ++actionRuns; });
  queue.schedule(stubborn);
  queue.schedule(polite);
  started.wait();

  queue.cancelAllTasks();
  // Newest first, and the queue does not wait for the jobs to end.
  EXPECT_EQ(log.messages(), (QStringList{"Send cancel signal to 2 jobs", "Aborting 'Polite'", "Aborting 'Stubborn'"}));
  EXPECT_EQ(stubborn->status(), Job::Status::running);
  EXPECT_EQ(stubborn->progress().state(), JobProgressState::canceled);
  EXPECT_EQ(actionRuns, 1);

  ASSERT_TRUE(QTest::qWaitFor([&] { return polite->status() == Job::Status::finished; }, 5000));
  EXPECT_EQ(queue.activeJobsCount(), 1);
  EXPECT_TRUE(log.messages().contains("Job 'Polite' canceled"));
  // A second cancel reaches only what is still active, and runs no action twice.
  log.clear();
  queue.cancelAllTasks();
  EXPECT_EQ(log.messages(), (QStringList{"Send cancel signal to 1 jobs", "Aborting 'Stubborn'"}));
  EXPECT_EQ(actionRuns, 1);

  release.count_down();
  ASSERT_TRUE(queue.waitForDone(5000));
  EXPECT_TRUE(log.messages().contains("Job 'Stubborn' canceled"));
}

TEST(JobQueue, CancelInterruptsARunningGitAndKeepsTheCanceledState) {
  TempRepository repository;
  JobQueue queue;
  std::atomic<bool> stoppedEarly = false;
  QElapsedTimer timer;
  auto job = makeJob("Wait", [&](JobProgress& p) {
    // A shell alias whose child sleeps: the interrupt must reach the whole process group.
    const GitResponse response = GitRequest(repository.module(), {"-c", "alias.pause=!sleep 30", "pause"}).executeWithProgress(p);
    stoppedEarly = !response.isSuccess() && timer.elapsed() < 20000;
  });
  timer.start();
  queue.schedule(job);
  ASSERT_TRUE(QTest::qWaitFor([&] { return job->progress().output().contains("$ git"); }, 5000));
  QThread::msleep(200);  // let the child start its sleep
  queue.cancelAllTasks();
  ASSERT_TRUE(queue.waitForDone(20000));
  EXPECT_TRUE(stoppedEarly);
  EXPECT_EQ(job->progress().state(), JobProgressState::canceled);
}

TEST(JobQueue, ACancelAtAnyMomentAroundTheLaunchStopsTheGit) {
  // git blocks opening a FIFO nobody writes, without children of its own: only the
  // interrupt ends it. The cancel lands before, during or after the child's start.
  TempRepository repository;
  const QString fifo = repository.path() + "/blocked";
  ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  for (int delayMs = 0; delayMs < 8; ++delayMs) {
    JobQueue queue;
    auto job = makeJob("Blocked", [&](JobProgress& p) {
      GitRequest(repository.module(), {"config", "--file", fifo, "--list"}).executeWithProgress(p);
    });
    queue.schedule(job);
    QThread::msleep(delayMs);
    queue.cancelAllTasks();
    if (!queue.waitForDone(10000)) {
      QFile(fifo).open(QIODevice::WriteOnly);  // lets the stuck git go before failing
      FAIL() << "the cancel was lost with a delay of " << delayMs << " ms";
    }
    EXPECT_EQ(job->progress().state(), JobProgressState::canceled) << "delay " << delayMs;
  }
}

TEST(JobQueue, ClosingTheQueueCancelsAndWaitsForItsJobs) {
  auto queue = std::make_unique<JobQueue>();
  std::latch started(1);
  auto job = makeJob("Refresh", [&](JobProgress& p) {
    started.count_down();
    while (!p.isCanceled()) QThread::msleep(1);
  });
  queue->schedule(job);
  started.wait();
  queue.reset();
  EXPECT_EQ(job->status(), Job::Status::finished);
  EXPECT_EQ(job->progress().state(), JobProgressState::canceled);
}

TEST(JobQueue, AJobOutOfTheHistoryIsGoneWhenTheWaitEnds) {
  // Slow to destroy, so a destruction still under way on the worker would show.
  struct SlowToDestroy {
    std::atomic<bool>& destroyed;
    ~SlowToDestroy() {
      QThread::msleep(300);
      destroyed = true;
    }
  };
  std::atomic<bool> destroyed = false;
  std::latch release(1);
  JobQueue queue;
  queue.schedule(
      makeJob("Slow", [held = std::make_shared<SlowToDestroy>(destroyed), &release](JobProgress&) { release.wait(); }));
  // Pushes the first job out of the history: only its worker holds it now.
  for (int i = 1; i < JobQueue::userJobsMaxSize; ++i) queue.schedule(makeJob(QStringLiteral("job %1").arg(i)));
  release.count_down();
  ASSERT_TRUE(queue.waitForDone(5000));
  EXPECT_TRUE(destroyed);
}
