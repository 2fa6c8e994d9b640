#include "Git/Commands/Revision/RevisionLogStream.h"

#include "Git/Process/GitRequest.h"

std::optional<ResultError> RevisionLogStream::run(const GitModule& module, const QStringList& arguments,
                                                  RevisionLogParser& parser) {
  GitStreamReaderResponse response = GitRequest(module, arguments).executeWithReader();
  if (!response.isSuccess()) return toResultError(*response.failure);
  if (!response.outputReader) {
    response.finish();
    return Error::CannotReachHere{QStringLiteral("Cannot create stream reader")};
  }
  std::optional<ResultError> failure;
  while (auto line = response.outputReader->nextLineBytes()) {
    if ((failure = parser.consume(QByteArrayView(*line)))) break;
  }
  // Closing the reader first lets a git that still writes end on a broken pipe.
  const int status = response.finish();
  response.outputReader.reset();
  if (failure) return failure;
  if (status >= 1) {
    // stderr went to our own; what the user needs is that git failed.
    return Error::GitUnknownError{QString(), QStringLiteral("git %1 exited with status %2")
                                                  .arg(arguments.first())
                                                  .arg(status)};
  }
  parser.finish();
  return std::nullopt;
}
