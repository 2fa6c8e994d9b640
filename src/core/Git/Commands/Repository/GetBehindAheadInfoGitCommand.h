#pragma once
#include <QString>

#include "Git/ResultError.h"
#include "Models/BehindAheadInfoCache.h"
#include "Models/GitModule.h"

class JobProgress;
class Cancelable;

// Ahead and behind counts of every local branch against its upstream.
struct GetBehindAheadInfoGitCommand {
  // "refs/heads/main\t[ahead 2, behind 1]" lines; branches with nothing to report drop out.
  static BehindAheadInfoCache parse(const QString& output);
  // The progress, when given, records the command's stopwatch.
  static GitResult<BehindAheadInfoCache> execute(const GitModule& module, Cancelable* cancellationToken = nullptr,
                                                 JobProgress* progress = nullptr);
};
