#pragma once
#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include "Git/ResultError.h"
#include "Git/Process/StreamLineReader.h"

class Task;

struct GitResponseError {
  enum class Kind { workingDirectoryNotExists, unknownError, cannotEncodeOutput };
  Kind kind = Kind::unknownError;
  QString directory;   // workingDirectoryNotExists
  int32_t status = 0;  // unknownError
  QString output;      // unknownError
  QString error;       // unknownError

  bool operator==(const GitResponseError&) const = default;
};

struct ShellResponseError {
  enum class Kind { launchPathIsNotExecutable, workingDirectoryNotExists, unknownError, cannotEncodeOutput };
  Kind kind = Kind::unknownError;
  QString path;        // launchPathIsNotExecutable
  QString directory;   // workingDirectoryNotExists
  int32_t status = 0;  // unknownError
  QString output;
  QString error;

  bool operator==(const ShellResponseError&) const = default;
};

struct GitResponse {
  std::optional<GitResponseError> failure;
  QString output;
  QString errorOutput;
  bool isSuccess() const { return !failure.has_value(); }
};

struct GitDataResponse {
  std::optional<GitResponseError> failure;
  QByteArray data;
  QString errorOutput;
  bool isSuccess() const { return !failure.has_value(); }
};

// The log readers get stdout as lines while git still runs.
struct GitStreamReaderResponse {
  std::optional<GitResponseError> failure;
  std::unique_ptr<StreamLineReader> outputReader;
  std::shared_ptr<Task> task;
  bool isSuccess() const { return !failure.has_value(); }
  // Closes the reader and waits for git; gives its termination status.
  int finish();
};

struct ShellStringResponse {
  std::optional<ShellResponseError> failure;
  QString output;
  QString errorOutput;
  bool isSuccess() const { return !failure.has_value(); }
};

// The one shared conversion of a failed response into the system-wide error.
ResultError toResultError(const GitResponseError& error);
ResultError toResultError(const ShellResponseError& error);

template <typename T, typename Response>
GitResult<T> failureResult(const Response& response) {
  return GitResult<T>(toResultError(*response.failure));
}
