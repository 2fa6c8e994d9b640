#pragma once
// One row of the activity manager: a copy of what the row last drew, compared with the
// live job on each tick so that only changed rows are redrawn.
#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>

#include "Jobs/Job.h"

class JobItem {
 public:
  struct StatusText {
    QString statusString;
    bool isRunning = false;
    bool isFailed = false;
    bool operator==(const StatusText&) const = default;
  };

  explicit JobItem(std::shared_ptr<Job> job);

  // Reads the job; sets isDirty when anything shown changed. Returns isDirty.
  bool refresh();
  void markDrawn() { isDirty = false; }

  static StatusText deriveStatus(Job::Status status, JobProgressState state);
  // The finish time as a short time without a date, in the user's locale.
  static QString finishedText(const std::optional<QDateTime>& finishTime);

  std::shared_ptr<Job> job;
  bool isDirty = true;
  QString name;
  QString finished;
  QString statusString;
  double progress = 0;
  bool isRunning = false;
  bool isFailed = false;
  std::optional<QDateTime> finishTime;
  Job::Status status = Job::Status::unknown;
  JobProgressState progressState = JobProgressState::inProgress;

 private:
  void applyStatus(Job::Status newStatus, JobProgressState newState);
};
