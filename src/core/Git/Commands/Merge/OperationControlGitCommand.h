#pragma once
// Continues, aborts or skips the merge, rebase, cherry-pick or revert under way. Continue
// keeps the messages git prepared: no editor can run without a terminal.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct OperationControlGitCommand {
  enum class Operation { merge, rebase, cherryPick, revert };
  enum class Action { continueOperation, abort, skip };

  // Empty for a combination git does not have (a merge cannot be skipped).
  static QStringList arguments(Operation operation, Action action);
  static GitVoidResult execute(const GitModule& module, Operation operation, Action action, JobProgress* progress = nullptr);
};
