#pragma once
// Writes git's commit-graph file for every reachable commit, split so that a later
// write only adds the new commits. A history with it opens faster: "git log" reads the
// parents from the file instead of every commit object. Path filters make file history
// and path search faster too, at several times the cost.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct WriteCommitGraphGitCommand {
  static QStringList arguments(bool changedPaths);
  static GitVoidResult execute(const GitModule& module, bool changedPaths, JobProgress* progress = nullptr);
};
