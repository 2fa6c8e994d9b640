#include "Git/Commands/WorkingDirectory/IgnorePatternGitCommand.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include "Extensions/GitQuotedPath.h"
#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

GitResult<QStringList> IgnorePatternGitCommand::preview(const GitModule& module, const QString& pattern) {
  const GitRequest request(module, {QStringLiteral("ls-files"), QStringLiteral("--modified"), QStringLiteral("--cached"),
                                    QStringLiteral("--ignored"), QStringLiteral("--others"), QStringLiteral("--exclude=") + pattern});
  const GitResponse response = request.execute();
  if (!response.isSuccess()) return failureResult<QStringList>(response);
  return parsePreview(response.output);
}

QStringList IgnorePatternGitCommand::parsePreview(const QString& output) {
  QStringList paths;
  QSet<QString> seen;
  for (const QString& line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const QString path = GitQuotedPath::unquote(line);
    // --modified and --cached both list a changed tracked file.
    if (!seen.contains(path)) {
      seen.insert(path);
      paths << path;
    }
  }
  return paths;
}

GitVoidResult IgnorePatternGitCommand::append(const GitModule& module, const QString& pattern) {
  QFile file(QDir(module.repositoryPath).filePath(QStringLiteral(".gitignore")));
  QByteArray existing;
  if (file.exists()) {
    if (!file.open(QIODevice::ReadOnly)) return Error::Generic{file.errorString()};
    existing = file.readAll();
    file.close();
  }
  QByteArray addition;
  if (!existing.isEmpty() && !existing.endsWith('\n')) addition += '\n';
  addition += pattern.toUtf8() + '\n';
  if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
    const QString message = QStringLiteral("Cannot write '%1': %2").arg(file.fileName(), file.errorString());
    LOG_ERROR(message);
    return Error::Generic{message};
  }
  if (file.write(addition) != addition.size()) return Error::Generic{file.errorString()};
  return Unit{};
}
