#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"

#include <QDir>
#include <QFileInfo>

#include "Git/Process/GitRequest.h"

GitResult<GitModule> GetGitDirectoryGitCommand::parse(const QString& output) {
  const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  if (lines.size() < 2 || lines.size() > 3 || !QDir::isAbsolutePath(lines[0]) || !QDir::isAbsolutePath(lines[1])) {
    return Error::CannotParse{output};
  }
  GitModule module{lines[1], lines[0], std::nullopt};
  if (lines.size() == 3) module.superProjectPath = lines[2];
  return module;
}

GitResult<GitModule> GetGitDirectoryGitCommand::execute(const QString& path) {
  const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
  const GitResponse response = GitRequest(absolute, {QStringLiteral("rev-parse"), QStringLiteral("--absolute-git-dir"),
                                                     QStringLiteral("--show-toplevel"),
                                                     QStringLiteral("--show-superproject-working-tree")})
                                   .execute(true);
  if (!response.isSuccess()) return failureResult<GitModule>(response);
  auto parsed = parse(response.output);
  if (!parsed) return parsed;
  GitModule module = parsed.value();
  // git prints the top level with links resolved.
  if (QFileInfo(absolute).canonicalFilePath() == QFileInfo(module.repositoryPath).canonicalFilePath()) module.repositoryPath = absolute;
  return module;
}
