#include "Git/Commands/Revision/ResetGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList ResetGitCommand::arguments(const QString& sha, Mode mode) {
  const QString flag = mode == Mode::soft ? QStringLiteral("--soft") : mode == Mode::mixed ? QStringLiteral("--mixed") : QStringLiteral("--hard");
  return {QStringLiteral("reset"), flag, sha};
}

GitVoidResult ResetGitCommand::execute(const GitModule& module, const QString& sha, Mode mode, JobProgress* progress) {
  return runGitCommand(module, arguments(sha, mode), progress);
}
