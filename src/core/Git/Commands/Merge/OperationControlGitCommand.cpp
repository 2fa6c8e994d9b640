#include "Git/Commands/Merge/OperationControlGitCommand.h"

#include <QFile>

#include "Git/Commands/Repository/ContinueRebaseGitCommand.h"
#include "Git/Commands/RunGitCommand.h"
#include "Models/RebaseMessageArchive.h"

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
  // A rebase from the todo sheet goes on with the messages chosen there.
  if (operation == Operation::rebase && action == Action::continueOperation &&
      QFile::exists(module.gitDirectoryPath(QStringLiteral("rebase-merge/") + RebaseMessageArchive::fileName()))) {
    return ContinueRebaseGitCommand::execute(module, progress);
  }
  return runGitCommand(module, args, progress);
}
