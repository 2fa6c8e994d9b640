#include "Git/Commands/WorkingDirectory/ContinueCherryPickGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"

QStringList ContinueCherryPickGitCommand::arguments() {
  // An editor would wait on a terminal that a child of this window doesn't have.
  return {QStringLiteral("-c"), QStringLiteral("core.editor=true"), QStringLiteral("cherry-pick"), QStringLiteral("--continue")};
}

GitVoidResult ContinueCherryPickGitCommand::execute(const GitModule& module, JobProgress* progress) {
  const GitRequest request(module, arguments());
  const GitResponse response = progress ? request.executeWithProgress(*progress) : request.execute();
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<Unit>(response);
  return Unit{};
}
