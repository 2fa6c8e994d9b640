#include "Jobs/StatusBarDisplay.h"

namespace {

constexpr qint64 finishedJobVisibleSeconds = 2;

StatusBarDisplay displayJob(const std::shared_ptr<Job>& job, Job::Status status) {
  StatusBarDisplay display;
  display.job = job;
  const JobProgress& progress = job->progress();
  const JobProgressState state = progress.state();
  if (state == JobProgressState::canceled) {
    display.text = job->name() + (status == Job::Status::running ? QStringLiteral(": canceling...") : QStringLiteral(": canceled"));
  } else {
    display.text = job->name() + QStringLiteral(": ") + progress.message();
    display.cancelButtonVisible = status == Job::Status::running;
  }
  if (job->progressType() == Job::ProgressType::progress) {
    display.barHidden = false;
    // A job that has just begun already shows a sliver.
    display.barValue = progress.progress() * 0.95 + 5.0;
  }
  return display;
}

}  // namespace

qint64 StatusBarDisplay::wholeSecondsBetween(const QDateTime& from, const QDateTime& to) {
  return from.msecsTo(to) / 1000;
}

StatusBarDisplay StatusBarDisplay::choose(const std::vector<std::shared_ptr<Job>>& userJobs, const QDateTime& now,
                                          const QString& repositoryLine) {
  for (auto it = userJobs.rbegin(); it != userJobs.rend(); ++it) {
    const auto& job = *it;
    if (!job->show().contains(Job::Show::inStatusBar())) continue;
    const Job::Status status = job->status();
    if (status == Job::Status::running) return displayJob(job, status);
    if (status == Job::Status::finished) {
      const auto finished = job->finishTime();
      if (finished && wholeSecondsBetween(*finished, now) < finishedJobVisibleSeconds) return displayJob(job, status);
    }
  }
  StatusBarDisplay display;
  display.text = repositoryLine;
  return display;
}

QString StatusBarDisplay::repositoryLine(const std::optional<QString>& folderName, bool loaded,
                                         const std::optional<QString>& branch) {
  if (!folderName) return QStringLiteral("Welcome to Jelv. Open a repository to start");
  if (!loaded) return *folderName + QStringLiteral(": loading...");
  if (branch) return *folderName + QStringLiteral(": ") + *branch;
  return *folderName + QStringLiteral(": detached HEAD");
}
