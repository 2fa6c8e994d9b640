#pragma once
// Times a step on a thread that has no job progress to record it on (the main
// thread's list models); the result goes to the debug log when the scope ends.
#include <QElapsedTimer>
#include <QString>

class Stopwatch {
 public:
  explicit Stopwatch(QString name);
  ~Stopwatch();
  Stopwatch(const Stopwatch&) = delete;
  Stopwatch& operator=(const Stopwatch&) = delete;

  qint64 elapsedMicroseconds() const { return timer_.nsecsElapsed() / 1000; }

 private:
  QString name_;
  QElapsedTimer timer_;
};
