#include "Git/Commands/Config/GetGitVersionGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

GitResult<QString> GetGitVersionGitCommand::parse(const QString& output) {
  const QStringList pieces = output.split(QStringLiteral("version"));
  if (pieces.size() < 2) {
    LOG_ERROR(QStringLiteral("Cannot parse git instance version: %1").arg(output));
    return Error::CannotParse{output};
  }
  return pieces.at(1).trimmed();
}

GitResult<QString> GetGitVersionGitCommand::execute(const GitInstanceType& gitInstance) {
  ShellRequest request{std::nullopt, gitInstance.launchPath(), {QStringLiteral("version")}};
  const ShellStringResponse response = request.execute();
  if (!response.isSuccess()) return failureResult<QString>(response);
  return parse(response.output);
}
