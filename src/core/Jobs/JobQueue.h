#pragma once
// Runs jobs on background threads with no limit of concurrency, keeps a short history
// for the activity manager and the status bar, and cancels everything at once.
// Lock order: the queue's lock, then a progress's lock (never the other way round).
//
// Each job gets a thread of its own: jobs mostly wait on child processes, so there is
// no point in a bound, and plain threads with standard locks keep every hand-over
// visible to ThreadSanitizer (the Qt pool's own locks are not).
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "Jobs/Job.h"

class JobQueue {
 public:
  static constexpr int userJobsMaxSize = 30;

  JobQueue();
  // Cancels what is left and waits for the workers: they touch this queue's lists.
  ~JobQueue();
  JobQueue(const JobQueue&) = delete;
  JobQueue& operator=(const JobQueue&) = delete;

  void schedule(const std::shared_ptr<Job>& job);
  // Sends cancel to every pending or running job; does not wait for them.
  void cancelAllTasks();

  int activeJobsCount() const;
  // Whether an operation the user can see (not an internal read) is pending or running,
  // or ended less than `grace` ago: what changes the repository while it runs is ours.
  bool hasUserWork(std::chrono::milliseconds grace) const;
  // Oldest first; running and finished alike. Never more than userJobsMaxSize - 1.
  std::vector<std::shared_ptr<Job>> userJobs() const;

  // Blocks until every scheduled job has ended (or the time is up); for shutdown and tests.
  bool waitForDone(int msecs = -1);

 private:
  void runJob(const std::shared_ptr<Job>& job);

  mutable std::mutex updateLock_;
  std::vector<std::shared_ptr<Job>> activeJobs_;  // newest first
  std::vector<std::shared_ptr<Job>> userJobs_;    // oldest first
  std::chrono::steady_clock::time_point lastUserWorkEnd_;

  // Threads that have not yet let go of this queue; guarded by threadsLock_.
  std::mutex threadsLock_;
  std::condition_variable threadsDone_;
  int runningThreads_ = 0;
};
