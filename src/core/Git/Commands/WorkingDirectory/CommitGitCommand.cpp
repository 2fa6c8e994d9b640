#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"

#include "Git/ErrorClassification.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUuid>

#include "Consts.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"
#include "Models/GitModuleSettings.h"

CommitOptions CommitOptions::fromSettings(const GitModuleSettings& settings, bool amend, bool noVerify) {
  CommitOptions options;
  options.signOff = settings.signOff;
  options.signingKey = settings.signingKey;
  options.amend = amend;
  options.noVerify = noVerify;
  return options;
}

QStringList CommitGitCommand::arguments(const CommitOptions& options, const QString& messageFilePath) {
  QStringList args;
  const bool sign = options.signingKey && !options.signingKey->isEmpty();
  // The wrapper finds gpg and its agent even when the application was started from the desktop.
  if (sign) args << QStringLiteral("-c") << QStringLiteral("gpg.program=") + Consts::Git::gpgWrapperPath();
  args << QStringLiteral("commit");
  if (sign) args << QStringLiteral("--gpg-sign=") + *options.signingKey;
  if (options.signOff) args << QStringLiteral("--signoff");
  if (options.amend) args << QStringLiteral("--amend");
  if (options.noVerify) args << QStringLiteral("--no-verify");
  args << QStringLiteral("--file=") + messageFilePath;
  return args;
}

QString CommitGitCommand::normalizedMessage(const QString& message) {
  return message.normalized(QString::NormalizationForm_C);
}

std::optional<QString> CommitGitCommand::writeMessageFile(const QString& message) {
  const QString path = QDir::temp().filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    LOG_ERROR(QStringLiteral("Cannot create the commit message file '%1': %2").arg(path, file.errorString()));
    return std::nullopt;
  }
  file.write(normalizedMessage(message).toUtf8());
  if (!file.commit()) {
    LOG_ERROR(QStringLiteral("Cannot write the commit message file '%1': %2").arg(path, file.errorString()));
    return std::nullopt;
  }
  return path;
}

GitVoidResult CommitGitCommand::execute(const GitModule& module, const QString& message, const CommitOptions& options,
                                        JobProgress* progress) {
  const auto commitFailed = [&](const QString& error) {
    return GitVoidResult(Error::GitCommitFailed{module, message, options.amend, error});
  };
  const std::optional<QString> messageFile = writeMessageFile(message);
  if (!messageFile) return commitFailed(QStringLiteral("Cannot write the commit message to a temporary file."));

  const GitRequest request(module, arguments(options, *messageFile));
  const GitResponse response = progress ? request.executeWithProgress(*progress) : request.execute();
  QFile::remove(*messageFile);

  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (response.isSuccess()) return Unit{};
  const GitResponseError& failure = *response.failure;
  if (failure.kind != GitResponseError::Kind::unknownError) return toResultError(failure);
  // A stale lock is repaired by removing it, not by retrying the commit without hooks.
  if (ErrorClassification::isRepositoryLocked(failure.error)) return Error::RepositoryIsLocked{failure.error};
  // A hook prints its complaint on either stream, "nothing to commit" comes on stdout.
  QString error = failure.error;
  if (!failure.output.trimmed().isEmpty()) {
    if (!error.isEmpty() && !error.endsWith(QLatin1Char('\n'))) error += QLatin1Char('\n');
    error += failure.output;
  }
  return commitFailed(error);
}
