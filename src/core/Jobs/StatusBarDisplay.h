#pragma once
// What the repository status bar shows on one poll: the newest visible job that is
// running or finished a moment ago, else the repository's own line.
#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "Jobs/Job.h"

struct StatusBarDisplay {
  QString text;
  bool cancelButtonVisible = false;
  bool barHidden = true;
  double barValue = 0;  // the bar's minimum when hidden
  std::shared_ptr<Job> job;  // the job whose cancel button this is, if any

  // `userJobs` oldest first, as the queue gives them.
  static StatusBarDisplay choose(const std::vector<std::shared_ptr<Job>>& userJobs, const QDateTime& now,
                                 const QString& repositoryLine);

  // The line without a job: no folder gives the welcome text; a folder without a loaded
  // state reads "loading..."; without a branch the head is detached.
  static QString repositoryLine(const std::optional<QString>& folderName, bool loaded,
                                const std::optional<QString>& branch);

  // Whole seconds between the two times, truncated: 1.9 s counts as 1.
  static qint64 wholeSecondsBetween(const QDateTime& from, const QDateTime& to);
};
