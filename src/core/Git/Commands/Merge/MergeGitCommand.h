#pragma once
// Merges a reference into the checked-out branch. Squash wins over no-fast-forward. A
// merge stopped by conflicts fails with git's text; the repository's state then shows
// the merge under way.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct MergeGitCommand {
  struct Options {
    bool squash = false;
    bool noFastForward = false;
    QString signingKey;  // empty: not signed
  };
  static QStringList arguments(const QString& reference, const Options& options);
  static GitVoidResult execute(const GitModule& module, const QString& reference, const Options& options, JobProgress* progress = nullptr);
};
