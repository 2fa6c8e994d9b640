#include "Jobs/Job.h"

Job::Job(QString name, Show show, ProgressType progressType, Action action)
    : id_(nextId()), name_(std::move(name)), show_(show), progressType_(progressType), action_(std::move(action)) {}

// Ids wrap at 1000 on purpose: they label rows and trace events, nothing looks them up.
int Job::nextId() {
  static std::mutex counterLock;
  static int counter = 0;
  std::lock_guard lock(counterLock);
  counter = (counter + 1) % 1000;
  return counter;
}

Job::Status Job::status() const {
  std::lock_guard lock(updateLock_);
  return statusValue_;
}

std::optional<QDateTime> Job::startTime() const {
  std::lock_guard lock(updateLock_);
  return startTimeValue_;
}

std::optional<QDateTime> Job::finishTime() const {
  std::lock_guard lock(updateLock_);
  return finishTimeValue_;
}

void Job::setStatus(Status status) {
  std::lock_guard lock(updateLock_);
  if (status == Status::running) startTimeValue_ = QDateTime::currentDateTimeUtc();
  if (status == Status::finished) finishTimeValue_ = QDateTime::currentDateTimeUtc();
  statusValue_ = status;
}
