#pragma once
// Letting go of a tab's job queue without waiting for it. The queue's jobs are canceled
// and a helper thread keeps the queue until they have ended, so that dropping the other
// references never blocks the window on a job that is slow to stop.
#include <memory>

class JobQueue;

namespace ReleasedQueues {

void letGo(const std::shared_ptr<JobQueue>& queue);
// Waits for the queues let go to end their jobs (at quit); false when time ran out.
bool waitForAll(int msecs);

}  // namespace ReleasedQueues
