#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"

#include "Git/Process/GitRequest.h"

QStringList GetSubmodulesGitCommand::arguments() {
  return {QStringLiteral("config"), QStringLiteral("--file"), QStringLiteral(".gitmodules"), QStringLiteral("--get-regexp"),
          QStringLiteral("path")};
}

GitResult<SubmoduleList> GetSubmodulesGitCommand::execute(const GitModule& module) {
  // Without the file, or without a match, git config exits with 1 and says nothing.
  const GitResponse response = GitRequest(module, arguments()).execute(true);
  if (!response.isSuccess()) {
    const GitResponseError& error = *response.failure;
    if (error.kind == GitResponseError::Kind::unknownError && error.status == 1 && error.error.trimmed().isEmpty()) {
      return SubmoduleList{};
    }
    return failureResult<SubmoduleList>(response);
  }
  return parse(response.output);
}

SubmoduleList GetSubmodulesGitCommand::parse(const QString& output) {
  SubmoduleList submodules;
  const Submodule prototype;
  for (const QString& line : output.split(QLatin1Char('\n'))) {
    const QStringList pieces = line.split(QStringLiteral(".path "));
    if (pieces.size() != 2 || !pieces[0].startsWith(prototype.namePrifix)) continue;
    Submodule submodule;
    submodule.name = pieces[0].mid(prototype.namePrifix.size());
    submodule.path = pieces[1];
    submodules.push_back(std::move(submodule));
  }
  return submodules;
}
