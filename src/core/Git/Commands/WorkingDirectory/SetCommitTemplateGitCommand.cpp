#include "Git/Commands/WorkingDirectory/SetCommitTemplateGitCommand.h"

#include <QSaveFile>

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

QString SetCommitTemplateGitCommand::defaultPath(const GitModule& module) {
  return module.gitDirectoryUrl + QStringLiteral("/commit_msg_template.txt");
}

GitVoidResult SetCommitTemplateGitCommand::execute(const GitModule& module, const std::optional<QString>& path,
                                                   const QString& content) {
  const QString target = path.value_or(defaultPath(module));
  QSaveFile file(target);
  if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0 || !file.commit()) {
    const QString message = QStringLiteral("Cannot write the commit template '%1': %2").arg(target, file.errorString());
    LOG_ERROR(message);
    return Error::Generic{message};
  }
  const GitRequest request(module, {QStringLiteral("config"), QStringLiteral("--local"), QStringLiteral("commit.template"), target});
  const GitResponse response = request.execute();
  if (!response.isSuccess()) return failureResult<Unit>(response);
  return Unit{};
}
