#include "Git/Commands/Revision/RevisionLogStream.h"

#include <thread>

#include "Git/Process/GitRequest.h"
#include "Git/Process/Task.h"

std::optional<ResultError> RevisionLogStream::run(const GitModule& module, const QStringList& arguments,
                                                  RevisionLogParser& parser) {
  GitStreamReaderResponse response = GitRequest(module, arguments).executeWithReader();
  if (!response.isSuccess()) return toResultError(*response.failure);
  if (!response.outputReader) {
    response.finish();
    return Error::CannotReachHere{QStringLiteral("Cannot create stream reader")};
  }
  // Drained beside the output, so that git never blocks on a full error pipe.
  QByteArray errorOutput;
  std::thread errorReader;
  if (const int errorFd = response.task ? response.task->takeStderr() : -1; errorFd >= 0) {
    errorReader = std::thread([errorFd, &errorOutput] { errorOutput = Task::readAll(errorFd); });
  }
  std::optional<ResultError> failure;
  while (auto line = response.outputReader->nextLineBytes()) {
    if ((failure = parser.consume(QByteArrayView(*line)))) break;
  }
  // Closing the reader first lets a git that still writes end on a broken pipe.
  const int status = response.finish();
  response.outputReader.reset();
  if (errorReader.joinable()) errorReader.join();
  if (failure) return failure;
  if (status >= 1) {
    QString reason = QString::fromUtf8(errorOutput).trimmed();
    if (reason.isEmpty()) reason = QStringLiteral("git %1 exited with status %2").arg(arguments.first()).arg(status);
    return toResultError(GitResponseError{GitResponseError::Kind::unknownError, {}, status, QString(), reason});
  }
  parser.finish();
  return std::nullopt;
}
