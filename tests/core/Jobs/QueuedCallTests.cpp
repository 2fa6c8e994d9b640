// Hand-overs from workers to the main thread: each value arrives whole and is used on the
// main thread; a call whose receiver is gone never runs but still lets go of what it holds.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>
#include <QThread>
#include <algorithm>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

#include "Jobs/QueuedCall.h"

TEST(QueuedCall, WorkersHandTheirValuesToTheMainThread) {
  constexpr int workers = 4;
  constexpr int callsEach = 50;
  constexpr long size = 200;
  struct Received {
    long sum = 0;
    bool onMainThread = false;
  };
  std::vector<Received> received;  // main thread only
  std::vector<std::thread> threads;
  for (int w = 0; w < workers; ++w) {
    threads.emplace_back([w, &received] {
      for (int c = 0; c < callsEach; ++c) {
        // Filled here and read on the main thread while this worker goes on: only the
        // hand-over orders the two.
        std::vector<long> values(size);
        std::iota(values.begin(), values.end(), static_cast<long>(w * callsEach + c));
        postQueuedCall(QCoreApplication::instance(), [values = std::move(values), &received] {
          received.push_back({std::accumulate(values.begin(), values.end(), 0L),
                              QThread::currentThread() == QCoreApplication::instance()->thread()});
        });
      }
    });
  }
  const bool all = QTest::qWaitFor([&] { return received.size() == static_cast<size_t>(workers * callsEach); }, 10000);
  for (auto& t : threads) t.join();
  ASSERT_TRUE(all);
  std::sort(received.begin(), received.end(), [](const Received& a, const Received& b) { return a.sum < b.sum; });
  for (int k = 0; k < workers * callsEach; ++k) {
    // The k-th call's values run from k to k + size - 1.
    EXPECT_EQ(received[k].sum, size * k + size * (size - 1) / 2) << "call " << k;
    EXPECT_TRUE(received[k].onMainThread) << "call " << k;
  }
}

TEST(QueuedCall, ACallForAReceiverThatIsGoneIsDroppedAndReleased) {
  auto receiver = std::make_unique<QObject>();
  auto held = std::make_shared<int>(7);
  const std::weak_ptr<int> watch = held;
  bool ran = false;
  std::thread([&, held = std::move(held)]() mutable {
    postQueuedCall(receiver.get(), [&ran, held = std::move(held)] { ran = true; });
  }).join();
  EXPECT_FALSE(watch.expired());  // waits in the event queue
  receiver.reset();
  QCoreApplication::processEvents();
  EXPECT_FALSE(ran);
  EXPECT_TRUE(watch.expired());
}
