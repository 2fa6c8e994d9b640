#include "Git/Commands/Repository/GetHeadGitCommand.h"

#include "Git/Process/GitRequest.h"

GitResult<QString> GetHeadGitCommand::execute(const GitModule& module) {
  const GitResponse response = GitRequest(module, {QStringLiteral("rev-parse"), QStringLiteral("HEAD")}).execute(true);
  if (!response.isSuccess()) return failureResult<QString>(response);
  return response.output.trimmed();
}
