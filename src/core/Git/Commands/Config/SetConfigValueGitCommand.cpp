#include "Git/Commands/Config/SetConfigValueGitCommand.h"

#include "Git/Process/GitRequest.h"

QStringList SetConfigValueGitCommand::arguments(const QString& key, const std::optional<QString>& value,
                                                ConfigLocation location) {
  QStringList args{QStringLiteral("config"),
                   location == ConfigLocation::local ? QStringLiteral("--local") : QStringLiteral("--global")};
  if (value) args << key << *value;
  else args << QStringLiteral("--unset") << key;
  return args;
}

GitVoidResult SetConfigValueGitCommand::execute(const GitModule& module, const QString& key,
                                                const std::optional<QString>& value, ConfigLocation location) {
  const GitResponse response = GitRequest(module, arguments(key, value, location)).execute(!value);
  if (!response.isSuccess()) {
    // git config --unset exits 5 when the key is absent: already the wanted state.
    const GitResponseError& failure = *response.failure;
    if (!value && failure.kind == GitResponseError::Kind::unknownError && failure.status == 5) return Unit{};
    return failureResult<Unit>(response);
  }
  return Unit{};
}
