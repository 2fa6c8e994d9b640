#include "Git/Commands/Merge/ResolveMergeConflictGitCommand.h"

#include <QDir>
#include <QSaveFile>

#include "Git/Commands/RunGitCommand.h"
#include "Logging/AdvancedLogger.h"

QStringList ResolveMergeConflictGitCommand::arguments(const QString& path) {
  return {QStringLiteral("add"), QStringLiteral("--"), path};
}

GitVoidResult ResolveMergeConflictGitCommand::execute(const GitModule& module, const QString& path, const QString& content) {
  LOG_INFO(QStringLiteral("Save the merge result of '%1'").arg(path));
  QSaveFile file(QDir(module.repositoryPath).filePath(path));
  if (!file.open(QIODevice::WriteOnly)) {
    return Error::Generic{QStringLiteral("Cannot write '%1': %2").arg(path, file.errorString())};
  }
  file.write(content.toUtf8());
  if (!file.commit()) return Error::Generic{QStringLiteral("Cannot write '%1': %2").arg(path, file.errorString())};
  return runGitCommand(module, arguments(path));
}
