#include "Git/Commands/Config/GetConfigValueGitCommand.h"

#include <QStringList>

#include "Git/Process/GitRequest.h"

QStringList GetConfigValueGitCommand::arguments(const QString& key, ConfigLocation location) {
  return {QStringLiteral("config"), location == ConfigLocation::local ? QStringLiteral("--local") : QStringLiteral("--global"),
          QStringLiteral("--get"), key};
}

GitResult<std::optional<QString>> GetConfigValueGitCommand::execute(const GitModule& module, const QString& key,
                                                                     ConfigLocation location) {
  const GitResponse response = GitRequest(module, arguments(key, location)).execute(true);
  if (!response.isSuccess()) {
    const GitResponseError& failure = *response.failure;
    if (failure.kind == GitResponseError::Kind::unknownError && failure.status == 1) return std::optional<QString>();
    return failureResult<std::optional<QString>>(response);
  }
  // Values keep inner blanks; only the line end goes.
  QString value = response.output;
  if (value.endsWith(QLatin1Char('\n'))) value.chop(1);
  return std::optional<QString>(value);
}
