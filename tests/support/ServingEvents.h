#pragma once
// Runs blocking work (git waiting on a prompt or an editor that this process answers) on
// a thread while this thread serves its event loop; gives up waiting after `seconds`.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <atomic>
#include <thread>

template <typename Work>
bool runServingEvents(Work work, int seconds = 60) {
  std::atomic<bool> done{false};
  std::thread worker([&] {
    work();
    done = true;
  });
  QElapsedTimer timer;
  timer.start();
  while (!done && timer.elapsed() < seconds * 1000) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QThread::msleep(5);
  }
  const bool finished = done.load();
  worker.join();
  return finished;
}
