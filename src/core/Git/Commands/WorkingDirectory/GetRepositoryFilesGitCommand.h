#pragma once
// The paths of the tracked files, from the top of the work tree, in git's order.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct GetRepositoryFilesGitCommand {
  static QStringList arguments();
  // A conflicted file is listed once per stage; it comes back once.
  static QStringList parse(const QString& output);
  static GitResult<QStringList> execute(const GitModule& module, JobProgress* progress = nullptr);
};
