#include "Git/Commands/RunGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"

GitResult<GitResponse> runGitCommandWithResponse(const GitModule& module, const QStringList& arguments, JobProgress* progress) {
  const GitRequest request(module, arguments);
  GitResponse response = progress ? request.executeWithProgress(*progress) : request.execute();
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<GitResponse>(response);
  return response;
}

GitVoidResult runGitCommand(const GitModule& module, const QStringList& arguments, JobProgress* progress) {
  const GitResult<GitResponse> result = runGitCommandWithResponse(module, arguments, progress);
  if (!result) return result.error();
  return Unit{};
}
