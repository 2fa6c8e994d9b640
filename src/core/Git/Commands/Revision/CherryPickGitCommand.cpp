#include "Git/Commands/Revision/CherryPickGitCommand.h"

#include "Git/Commands/RunGitCommand.h"
#include "Git/Commands/SigningArguments.h"

QStringList CherryPickGitCommand::arguments(const QStringList& shas, const Options& options) {
  QStringList args = SigningArguments::prefix(options.signingKey);
  args << QStringLiteral("cherry-pick");
  if (options.parentNumber) args << QStringLiteral("-m") << QString::number(*options.parentNumber);
  if (!options.commit) args << QStringLiteral("--no-commit");
  args << SigningArguments::suffix(options.signingKey) << shas;
  return args;
}

GitVoidResult CherryPickGitCommand::execute(const GitModule& module, const QStringList& shas, const Options& options,
                                            JobProgress* progress) {
  return runGitCommand(module, arguments(shas, options), progress);
}
