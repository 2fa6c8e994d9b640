#include "Git/Commands/Repository/TagGitCommand.h"

#include "Consts.h"
#include "Git/Commands/RunGitCommand.h"

QStringList TagGitCommand::createArguments(const QString& name, const QString& sha, const QString& message, const QString& signingKey) {
  QStringList arguments;
  const bool sign = !signingKey.isEmpty();
  // The wrapper finds gpg and its agent even when the application was started from the desktop.
  if (sign) arguments << QStringLiteral("-c") << QStringLiteral("gpg.program=") + Consts::Git::gpgWrapperPath();
  arguments << QStringLiteral("tag") << name << sha;
  if (sign) arguments << QStringLiteral("--sign") << QStringLiteral("--local-user=") + signingKey;
  arguments << QStringLiteral("--annotate") << QStringLiteral("-m") << message;
  return arguments;
}

QStringList TagGitCommand::deleteArguments(const QString& name) { return {QStringLiteral("tag"), QStringLiteral("--delete"), name}; }

GitVoidResult TagGitCommand::create(const GitModule& module, const QString& name, const QString& sha, const QString& message,
                                    const QString& signingKey, JobProgress* progress) {
  return runGitCommand(module, createArguments(name, sha, message, signingKey), progress);
}

GitVoidResult TagGitCommand::remove(const GitModule& module, const QString& name, JobProgress* progress) {
  return runGitCommand(module, deleteArguments(name), progress);
}
