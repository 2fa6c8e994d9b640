#include "Git/Commands/Remotes/CloneGitCommand.h"

#include <QDir>
#include <QFileInfo>

#include "Git/Commands/Remotes/RemoteOperation.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"

QStringList CloneGitCommand::arguments(const QString& url, const QString& destination) {
  return {QStringLiteral("clone"), QStringLiteral("--recurse-submodules"), QStringLiteral("--progress"), QStringLiteral("--verbose"),
          QStringLiteral("--"), url, destination};
}

std::optional<QString> CloneGitCommand::destinationProblem(const QString& destination) {
  if (destination.trimmed().isEmpty()) return QStringLiteral("Choose a destination folder");
  const QFileInfo info(destination);
  if (!info.isAbsolute()) return QStringLiteral("The destination must be an absolute path");
  if (info.exists()) {
    if (!info.isDir()) return QStringLiteral("A file of that name exists");
    if (!QDir(destination).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
      return QStringLiteral("The destination folder is not empty");
    }
    return std::nullopt;
  }
  // git makes missing parents itself, but the nearest existing one must be a folder.
  QDir parent = info.dir();
  while (!parent.exists() && parent.cdUp()) {
  }
  if (!QFileInfo(parent.path()).isDir()) return QStringLiteral("The destination's parent is no folder");
  return std::nullopt;
}

QString CloneGitCommand::folderName(const QString& url) {
  QString path = url.trimmed();
  while (path.endsWith(QLatin1Char('/'))) path.chop(1);
  if (path.endsWith(QStringLiteral("/.git"))) path.chop(5);
  const qsizetype cut = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char(':')));
  QString name = path.mid(cut + 1);
  if (name.endsWith(QStringLiteral(".git"))) name.chop(4);
  return name;
}

GitResult<QString> CloneGitCommand::execute(const QString& url, const QString& destination, JobProgress& progress) {
  if (auto problem = destinationProblem(destination)) return Error::Generic{*problem};
  const QString target = QDir::cleanPath(destination);
  const bool existed = QFileInfo::exists(target);
  // git runs in the nearest existing folder above the destination.
  QDir parent = QFileInfo(target).dir();
  while (!parent.exists() && parent.cdUp()) {
  }
  RemoteOperation operation;
  operation.kind = RemoteOperation::Kind::clone;
  operation.workingDirectory = parent.path();
  const GitVoidResult result = operation.run(GitModule{parent.path(), {}, {}}, arguments(url, target), progress);
  if (result) return target;
  if (!existed && QFileInfo::exists(target)) {
    if (!QDir(target).removeRecursively()) LOG_ERROR(QStringLiteral("Cannot remove the unfinished clone '%1'").arg(target));
  } else if (existed) {
    // The folder was there and empty: only what git put into it goes.
    QDir dir(target);
    for (const QFileInfo& entry : dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
      if (entry.isDir() && !entry.isSymLink()) {
        QDir(entry.filePath()).removeRecursively();
      } else {
        QFile::remove(entry.filePath());
      }
    }
  }
  return result.error();
}
