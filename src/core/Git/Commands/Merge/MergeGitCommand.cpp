#include "Git/Commands/Merge/MergeGitCommand.h"

#include "Git/Commands/RunGitCommand.h"
#include "Git/Commands/SigningArguments.h"

QStringList MergeGitCommand::arguments(const QString& reference, const Options& options) {
  QStringList args = SigningArguments::prefix(options.signingKey);
  args << QStringLiteral("merge") << reference;
  if (options.squash) {
    args << QStringLiteral("--squash");
  } else if (options.noFastForward) {
    args << QStringLiteral("--no-ff");
  }
  args << SigningArguments::suffix(options.signingKey);
  return args;
}

GitVoidResult MergeGitCommand::execute(const GitModule& module, const QString& reference, const Options& options, JobProgress* progress) {
  // Without a terminal git takes its prepared merge message and starts no editor.
  return runGitCommand(module, arguments(reference, options), progress);
}
