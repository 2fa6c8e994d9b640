#include "Git/Commands/Repository/RenameBranchGitCommand.h"

#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Git/Commands/RunGitCommand.h"
#include "Jobs/JobProgress.h"

QStringList RenameBranchGitCommand::pushNewNameArguments(const QString& remote, const QString& newName) {
  const QString reference = QStringLiteral("refs/heads/") + newName;
  return {QStringLiteral("-c"), QStringLiteral("push.default=upstream"), QStringLiteral("push"), remote,
          reference + QLatin1Char(':') + reference, QStringLiteral("--set-upstream"), QStringLiteral("--verbose"),
          QStringLiteral("--progress")};
}

QStringList RenameBranchGitCommand::deleteOldNameArguments(const QString& remote, const QString& oldName) {
  return {QStringLiteral("push"), remote, QStringLiteral("--delete"), QStringLiteral("refs/heads/") + oldName};
}

GitVoidResult RenameBranchGitCommand::execute(const GitModule& module, const QString& oldName, const QString& newName,
                                              const std::optional<QString>& remote, JobProgress* progress) {
  if (GitVoidResult renamed = BranchGitCommand::rename(module, oldName, newName, progress); !renamed) return renamed;
  if (!remote) return Unit{};
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (GitVoidResult pushed = runGitCommand(module, pushNewNameArguments(*remote, newName), progress); !pushed) return pushed;
  if (progress && progress->isCanceled()) return Error::Canceled{};
  return runGitCommand(module, deleteOldNameArguments(*remote, oldName), progress);
}
