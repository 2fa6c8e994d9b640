#pragma once
// Throws away everything changed in one submodule: its own work tree and index, its
// untracked files, and a moved commit pointer (the superproject checks out the
// recorded commit again).
#include <QString>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct DiscardSubmoduleChangesGitCommand {
  // submodulePath is relative to the superproject's work tree. Stops at the first failing step.
  static GitVoidResult execute(const GitModule& superproject, const QString& submodulePath);
};
