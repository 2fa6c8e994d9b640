#pragma once
// The folders of the work tree that git doesn't ignore: those of tracked files, and
// untracked folders as a whole. A watcher of the status needs no more, and a build
// folder full of objects costs it nothing.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct GetWorkTreeFoldersGitCommand {
  static QStringList arguments();
  // Relative folders without a trailing slash, "" for the top, sorted and unique.
  static QStringList parse(const QString& output);
  static GitResult<QStringList> execute(const GitModule& module, JobProgress* progress = nullptr);
};
