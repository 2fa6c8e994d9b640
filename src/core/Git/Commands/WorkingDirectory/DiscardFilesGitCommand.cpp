#include "Git/Commands/WorkingDirectory/DiscardFilesGitCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <cerrno>
#include <cstring>

#include "Extensions/PathBatches.h"
#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

namespace {
// Gives the reason when the entry couldn't be removed.
std::optional<QString> removeEntry(const QString& path) {
  const QFileInfo info(path);
  if (info.isDir() && !info.isSymLink()) {
    if (QDir(path).removeRecursively()) return std::nullopt;
    return QStringLiteral("The folder or one of its files could not be removed.");
  }
  QFile file(path);
  if (file.remove()) return std::nullopt;
  return file.errorString();
}
}  // namespace

GitVoidResult DiscardFilesGitCommand::execute(const GitModule& module, const std::vector<ChangedFilePtr>& files) {
  QStringList tracked;
  QStringList created;
  for (const ChangedFilePtr& file : files) (file->isNew ? created : tracked) << file->path;

  for (const QStringList& batch : PathBatches::split(tracked, PathBatches::discardLimit)) {
    const QStringList args{QStringLiteral("checkout-index"), QStringLiteral("--index"), QStringLiteral("--force"), QStringLiteral("--")};
    const GitResponse response = GitRequest(module, args + batch).execute();
    if (!response.isSuccess()) return failureResult<Unit>(response);
  }

  QStringList problems;
  const QDir root(module.repositoryPath);
  for (const QString& path : created) {
    const QString absolute = root.filePath(path);
    if (auto reason = removeEntry(absolute)) {
      const QString message = QStringLiteral("Cannot delete the file '%1'. Message: %2")
                                  .arg(QUrl::fromLocalFile(absolute).toString(), *reason);
      LOG_ERROR(message);
      problems << message;
    }
  }
  if (!problems.isEmpty()) return Error::Generic{problems.join(QLatin1Char('\n'))};
  return Unit{};
}
