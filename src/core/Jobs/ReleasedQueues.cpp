#include "Jobs/ReleasedQueues.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "Jobs/JobQueue.h"

namespace {

std::mutex lock;
std::condition_variable allDone;
int pending = 0;

}  // namespace

void ReleasedQueues::letGo(const std::shared_ptr<JobQueue>& queue) {
  if (!queue) return;
  queue->cancelAllTasks();
  {
    std::lock_guard guard(lock);
    ++pending;
  }
  std::thread([held = queue]() mutable {
    held->waitForDone();
    held.reset();
    std::lock_guard guard(lock);
    --pending;
    allDone.notify_all();
  }).detach();
}

bool ReleasedQueues::waitForAll(int msecs) {
  std::unique_lock guard(lock);
  return allDone.wait_for(guard, std::chrono::milliseconds(msecs), [] { return pending == 0; });
}
