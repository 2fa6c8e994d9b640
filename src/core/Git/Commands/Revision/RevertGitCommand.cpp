#include "Git/Commands/Revision/RevertGitCommand.h"

#include "Git/Commands/RunGitCommand.h"
#include "Git/Commands/SigningArguments.h"

QStringList RevertGitCommand::arguments(const QString& sha, const Options& options) {
  QStringList args = SigningArguments::prefix(options.signingKey);
  args << QStringLiteral("revert");
  if (options.parentNumber) args << QStringLiteral("-m") << QString::number(*options.parentNumber);
  args << (options.commit ? QStringLiteral("--no-edit") : QStringLiteral("--no-commit"));
  args << SigningArguments::suffix(options.signingKey) << sha;
  return args;
}

GitVoidResult RevertGitCommand::execute(const GitModule& module, const QString& sha, const Options& options, JobProgress* progress) {
  return runGitCommand(module, arguments(sha, options), progress);
}
