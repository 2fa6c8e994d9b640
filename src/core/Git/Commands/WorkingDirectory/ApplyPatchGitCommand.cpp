#include "Git/Commands/WorkingDirectory/ApplyPatchGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList ApplyPatchGitCommand::arguments(const QString& patchFile) {
  return {QStringLiteral("apply"), QStringLiteral("--whitespace=nowarn"), patchFile};
}

GitVoidResult ApplyPatchGitCommand::execute(const GitModule& module, const QString& patchFile, JobProgress* progress) {
  return runGitCommand(module, arguments(patchFile), progress);
}
