#include "Git/Commands/Merge/OperationControlGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList OperationControlGitCommand::arguments(Operation operation, Action action) {
  if (operation == Operation::merge && action == Action::skip) return {};
  const QString verb = operation == Operation::merge      ? QStringLiteral("merge")
                       : operation == Operation::rebase   ? QStringLiteral("rebase")
                       : operation == Operation::cherryPick ? QStringLiteral("cherry-pick")
                                                          : QStringLiteral("revert");
  switch (action) {
    case Action::continueOperation:
      return {QStringLiteral("-c"), QStringLiteral("core.editor=true"), verb, QStringLiteral("--continue")};
    case Action::abort: return {verb, QStringLiteral("--abort")};
    case Action::skip: return {verb, QStringLiteral("--skip")};
  }
  return {};
}

GitVoidResult OperationControlGitCommand::execute(const GitModule& module, Operation operation, Action action, JobProgress* progress) {
  const QStringList args = arguments(operation, action);
  if (args.isEmpty()) return Error::CannotReachHere{QStringLiteral("No such step for this operation")};
  return runGitCommand(module, args, progress);
}
