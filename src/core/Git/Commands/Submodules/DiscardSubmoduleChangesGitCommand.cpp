#include "Git/Commands/Submodules/DiscardSubmoduleChangesGitCommand.h"

#include <QDir>

#include "Git/Process/GitRequest.h"

GitVoidResult DiscardSubmoduleChangesGitCommand::execute(const GitModule& superproject, const QString& submodulePath) {
  const QString submoduleDirectory = QDir(superproject.repositoryPath).filePath(submodulePath);
  const GitRequest steps[] = {
      {submoduleDirectory, {QStringLiteral("reset"), QStringLiteral("--hard"), QStringLiteral("HEAD")}},
      {submoduleDirectory, {QStringLiteral("clean"), QStringLiteral("-f")}},
      {superproject.repositoryPath, {QStringLiteral("submodule"), QStringLiteral("update"), QStringLiteral("--init"),
                                     QStringLiteral("--recursive"), QStringLiteral("--"), submodulePath}},
  };
  for (const GitRequest& step : steps) {
    const GitResponse response = step.execute();
    if (!response.isSuccess()) return failureResult<Unit>(response);
  }
  return Unit{};
}
