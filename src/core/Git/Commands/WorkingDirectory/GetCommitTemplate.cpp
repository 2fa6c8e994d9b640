#include "Git/Commands/WorkingDirectory/GetCommitTemplate.h"

#include <QDir>
#include <QFile>

#include "Git/Process/GitRequest.h"
#include "Git/Process/TextEncoding.h"

GitResult<std::optional<QString>> GetCommitTemplate::execute(const GitModule& module, ConfigLocation configLocation) {
  const QString location = configLocation == ConfigLocation::local ? QStringLiteral("--local") : QStringLiteral("--global");
  const GitRequest request(module, {QStringLiteral("config"), location, QStringLiteral("commit.template")});
  const GitResponse response = request.execute(true);
  if (!response.isSuccess()) {
    const GitResponseError& failure = *response.failure;
    if (failure.kind == GitResponseError::Kind::unknownError && failure.status == 1) return std::optional<QString>();
    return failureResult<std::optional<QString>>(response);
  }
  const QString path = response.output.trimmed();
  if (path.isEmpty()) return std::optional<QString>();
  return std::optional<QString>(path);
}

std::optional<QString> GetCommitTemplate::readTemplate(const GitModule& module, const QString& templatePath) {
  QString path = templatePath;
  if (path.startsWith(QStringLiteral("~/"))) path = QDir::homePath() + path.mid(1);
  if (QDir::isRelativePath(path)) path = QDir(module.repositoryPath).filePath(path);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return decodeString(file.readAll());
}
