#include "Git/Commands/WorkingDirectory/CheckoutFileVersionGitCommand.h"

#include <QSaveFile>

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

QStringList CheckoutFileVersionGitCommand::arguments(const QString& revision, const QString& path) {
  return {QStringLiteral("cat-file"), QStringLiteral("blob"), revision + QLatin1Char(':') + path};
}

GitResult<QString> CheckoutFileVersionGitCommand::execute(const GitModule& module, const QString& revision, const QString& path,
                                                          const QString& destination) {
  const GitDataResponse response = GitRequest(module, arguments(revision, path)).executeData();
  if (!response.isSuccess()) return failureResult<QString>(response);
  QSaveFile file(destination);
  if (!file.open(QIODevice::WriteOnly) || file.write(response.data) != response.data.size() || !file.commit()) {
    const QString message = QStringLiteral("Cannot write '%1': %2").arg(destination, file.errorString());
    LOG_ERROR(message);
    return Error::Generic{message};
  }
  return destination;
}
