#include "Jobs/JobItem.h"

#include <QLocale>

JobItem::JobItem(std::shared_ptr<Job> j) : job(std::move(j)) {
  name = job->name();
  progress = job->progress().progress();
  finishTime = job->finishTime();
  finished = finishedText(finishTime);
  applyStatus(job->status(), job->progress().state());
}

bool JobItem::refresh() {
  if (name != job->name()) {
    name = job->name();
    isDirty = true;
  }
  const double newProgress = job->progress().progress();
  if (progress != newProgress) {
    progress = newProgress;
    isDirty = true;
  }
  const auto newFinishTime = job->finishTime();
  if (finishTime != newFinishTime) {
    finishTime = newFinishTime;
    finished = finishedText(finishTime);
    isDirty = true;
  }
  const Job::Status newStatus = job->status();
  const JobProgressState newState = job->progress().state();
  if (newStatus != status || newState != progressState) {
    applyStatus(newStatus, newState);
    isDirty = true;
  }
  return isDirty;
}

void JobItem::applyStatus(Job::Status newStatus, JobProgressState newState) {
  status = newStatus;
  progressState = newState;
  const StatusText text = deriveStatus(newStatus, newState);
  statusString = text.statusString;
  isRunning = text.isRunning;
  isFailed = text.isFailed;
}

JobItem::StatusText JobItem::deriveStatus(Job::Status status, JobProgressState state) {
  if (status == Job::Status::finished) {
    switch (state) {
      case JobProgressState::succeeded: return {QStringLiteral("succeeded"), false, false};
      case JobProgressState::failed: return {QStringLiteral("failed"), false, true};
      case JobProgressState::canceled: return {QStringLiteral("canceled"), false, false};
      case JobProgressState::inProgress: return {};
    }
  }
  if (status == Job::Status::running) {
    if (state == JobProgressState::canceled) return {QStringLiteral("canceling"), false, false};
    return {QStringLiteral("running"), true, false};
  }
  return {};
}

QString JobItem::finishedText(const std::optional<QDateTime>& finishTime) {
  if (!finishTime) return {};
  return QLocale().toString(finishTime->toLocalTime().time(), QLocale::ShortFormat);
}
