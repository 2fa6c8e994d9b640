#include "Git/Commands/WorkingDirectory/SaveChangesAsPatchGitCommand.h"

#include <QSaveFile>

#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

GitResult<QByteArray> SaveChangesAsPatchGitCommand::patch(const GitModule& module, const ChangedFileList& files, bool amend) {
  QByteArray patch;
  QString baseTree;
  for (const ChangedFilePtr& file : files) {
    if (file->isDirectory) continue;
    if (file->staged && amend && baseTree.isEmpty()) baseTree = GetWorkingDirectoryFileChangesGitCommand::amendBaseTree(module);
    const GitRequest request(module, GetWorkingDirectoryFileChangesGitCommand::patchArguments(*file, amend, baseTree));
    const GitDataResponse response = request.executeData();
    if (!response.isSuccess()) {
      const GitResponseError& failure = *response.failure;
      // An untracked file compared with /dev/null "differs": exit status 1, nothing on stderr.
      const bool differs = failure.kind == GitResponseError::Kind::unknownError && failure.status == 1 &&
                           response.errorOutput.trimmed().isEmpty();
      if (!differs) return Error::GitUnknownError{QString(), response.errorOutput};
    }
    patch += response.data;
  }
  return patch;
}

GitVoidResult SaveChangesAsPatchGitCommand::execute(const GitModule& module, const ChangedFileList& files, const QString& path,
                                                    bool amend) {
  const GitResult<QByteArray> text = patch(module, files, amend);
  if (!text) return text.mapError<Unit>();
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(text.value()) < 0 || !file.commit()) {
    const QString message = QStringLiteral("Cannot write the patch '%1': %2").arg(path, file.errorString());
    LOG_ERROR(message);
    return Error::Generic{message};
  }
  return Unit{};
}
