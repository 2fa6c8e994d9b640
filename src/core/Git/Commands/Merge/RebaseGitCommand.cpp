#include "Git/Commands/Merge/RebaseGitCommand.h"

#include <QFileInfo>

#include "Git/Commands/RunGitCommand.h"
#include "Git/Commands/SigningArguments.h"

QStringList RebaseGitCommand::arguments(const QString& target, bool autostash, const QString& signingKey) {
  QStringList args = SigningArguments::prefix(signingKey);
  args << QStringLiteral("rebase");
  if (autostash) args << QStringLiteral("--autostash");
  args << target << SigningArguments::suffix(signingKey);
  return args;
}

GitVoidResult RebaseGitCommand::execute(const GitModule& module, const QString& target, bool autostash, const QString& signingKey,
                                        JobProgress* progress) {
  GitVoidResult result = runGitCommand(module, arguments(target, autostash, signingKey), progress);
  if (!result && !result.isError<Error::Canceled>() && isInProgress(module)) return Unit{};
  return result;
}

bool RebaseGitCommand::isInProgress(const GitModule& module) {
  return QFileInfo(module.gitDirectoryPath(QStringLiteral("rebase-merge"))).isDir() ||
         QFileInfo(module.gitDirectoryPath(QStringLiteral("rebase-apply"))).isDir();
}
