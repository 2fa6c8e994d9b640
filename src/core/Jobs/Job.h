#pragma once
// A named closure with its own JobProgress. The queue moves the status forward; the
// user interface only reads. Status and the two stamps share one lock, taken alone.
#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "Jobs/JobProgress.h"

class Job {
 public:
  enum class Status { unknown, pending, running, finished };
  enum class ProgressType { progress, infinite };

  // Where a job may be seen. Callers pass none, inActivityManager, or both.
  struct Show {
    int rawValue = 0;
    static constexpr int inActivityManagerBit = 1;
    static constexpr int inStatusBarBit = 2;
    static Show none() { return {0}; }
    static Show inActivityManager() { return {inActivityManagerBit}; }
    static Show inStatusBar() { return {inStatusBarBit}; }
    static Show everywhere() { return {inActivityManagerBit | inStatusBarBit}; }
    bool contains(Show other) const { return (rawValue & other.rawValue) == other.rawValue; }
    Show operator|(Show other) const { return {rawValue | other.rawValue}; }
    bool operator==(const Show&) const = default;
  };

  using Action = std::function<void(JobProgress&)>;

  Job(QString name, Show show, ProgressType progressType, Action action);
  static std::shared_ptr<Job> make(QString name, Show show, ProgressType progressType, Action action) {
    return std::make_shared<Job>(std::move(name), show, progressType, std::move(action));
  }

  int id() const { return id_; }
  const QString& name() const { return name_; }
  Show show() const { return show_; }
  ProgressType progressType() const { return progressType_; }
  JobProgress& progress() const { return *progress_; }
  const std::shared_ptr<JobProgress>& sharedProgress() const { return progress_; }

  Status status() const;
  std::optional<QDateTime> startTime() const;
  std::optional<QDateTime> finishTime() const;
  // `running` stamps the start time, `finished` the finish time, under the same hold.
  void setStatus(Status status);

  // Runs the action with the progress; the queue calls this on a worker thread.
  void run() { if (action_) action_(*progress_); }

 private:
  static int nextId();

  mutable std::mutex updateLock_;
  const int id_;
  const QString name_;
  const Show show_;
  const ProgressType progressType_;
  const Action action_;
  const std::shared_ptr<JobProgress> progress_ = std::make_shared<JobProgress>();
  Status statusValue_ = Status::unknown;
  std::optional<QDateTime> startTimeValue_;
  std::optional<QDateTime> finishTimeValue_;
};
