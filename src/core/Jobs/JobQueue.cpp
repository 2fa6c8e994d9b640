#include "Jobs/JobQueue.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "Logging/AdvancedLogger.h"

JobQueue::JobQueue() = default;

JobQueue::~JobQueue() {
  cancelAllTasks();
  waitForDone();
}

void JobQueue::schedule(const std::shared_ptr<Job>& job) {
  {
    std::lock_guard lock(updateLock_);
    userJobs_.push_back(job);
    // '>=' keeps the history one below the constant's name.
    if (static_cast<int>(userJobs_.size()) >= userJobsMaxSize) userJobs_.erase(userJobs_.begin());
    activeJobs_.insert(activeJobs_.begin(), job);
  }
  job->setStatus(Job::Status::pending);
  {
    std::lock_guard lock(threadsLock_);
    ++runningThreads_;
  }
  // Jobs of one queue all run at once: a job that waits on a remote must not hold up a refresh.
  std::thread([this, owned = job]() mutable {
    runJob(owned);
    // Let go of the job before counting down: once the queue reads 0, no worker may still
    // be destroying a job (and what its action captured) behind the waiter's back.
    owned.reset();
    std::lock_guard lock(threadsLock_);
    --runningThreads_;
    // Notified under the lock: once the count reads 0 the queue may be gone.
    threadsDone_.notify_all();
  }).detach();
}

void JobQueue::runJob(const std::shared_ptr<Job>& job) {
  job->setStatus(Job::Status::running);
  job->run();
  if (job->progress().state() == JobProgressState::canceled) {
    LOG_INFO(QStringLiteral("Job '%1' canceled").arg(job->name()));
  }
  {
    std::lock_guard lock(updateLock_);
    auto it = std::find(activeJobs_.begin(), activeJobs_.end(), job);
    if (it != activeJobs_.end()) activeJobs_.erase(it);
    if (job->show() != Job::Show::none()) lastUserWorkEnd_ = std::chrono::steady_clock::now();
  }
  job->setStatus(Job::Status::finished);
}

void JobQueue::cancelAllTasks() {
  std::lock_guard lock(updateLock_);
  if (activeJobs_.empty()) return;
  LOG_INFO(QStringLiteral("Send cancel signal to %1 jobs").arg(activeJobs_.size()));
  for (const auto& job : activeJobs_) {
    LOG_INFO(QStringLiteral("Aborting '%1'").arg(job->name()));
    job->progress().cancel();
  }
}

int JobQueue::activeJobsCount() const {
  std::lock_guard lock(updateLock_);
  return static_cast<int>(activeJobs_.size());
}

bool JobQueue::hasUserWork(std::chrono::milliseconds grace) const {
  std::lock_guard lock(updateLock_);
  if (std::chrono::steady_clock::now() - lastUserWorkEnd_ < grace) return true;
  return std::any_of(activeJobs_.begin(), activeJobs_.end(), [](const auto& job) { return job->show() != Job::Show::none(); });
}

std::vector<std::shared_ptr<Job>> JobQueue::userJobs() const {
  std::lock_guard lock(updateLock_);
  return userJobs_;
}

bool JobQueue::waitForDone(int msecs) {
  std::unique_lock lock(threadsLock_);
  if (msecs < 0) {
    threadsDone_.wait(lock, [this] { return runningThreads_ == 0; });
    return true;
  }
  return threadsDone_.wait_for(lock, std::chrono::milliseconds(msecs), [this] { return runningThreads_ == 0; });
}
