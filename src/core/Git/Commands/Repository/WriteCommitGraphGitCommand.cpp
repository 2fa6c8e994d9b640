#include "Git/Commands/Repository/WriteCommitGraphGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList WriteCommitGraphGitCommand::arguments(bool changedPaths) {
  QStringList args{QStringLiteral("commit-graph"), QStringLiteral("write"), QStringLiteral("--reachable"),
                   QStringLiteral("--split"), QStringLiteral("--no-progress")};
  if (changedPaths) args << QStringLiteral("--changed-paths");
  return args;
}

GitVoidResult WriteCommitGraphGitCommand::execute(const GitModule& module, bool changedPaths, JobProgress* progress) {
  return runGitCommand(module, arguments(changedPaths), progress);
}
