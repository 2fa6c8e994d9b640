#pragma once
// `git clone` into a new folder, with progress and cancel. A clone that fails or is
// canceled takes away the folder it made, never one that was there before.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"

class JobProgress;

struct CloneGitCommand {
  static QStringList arguments(const QString& url, const QString& destination);
  // The destination may be missing or an empty folder. Gives the new repository's path.
  static GitResult<QString> execute(const QString& url, const QString& destination, JobProgress& progress);
  // Why the destination cannot take a clone; nothing when it can.
  static std::optional<QString> destinationProblem(const QString& destination);
  // The folder name git would choose for `url` ("repo" for ".../repo.git").
  static QString folderName(const QString& url);
};
