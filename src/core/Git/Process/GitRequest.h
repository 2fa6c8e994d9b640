#pragma once
// Runs the configured git with an exact argument list and blocks until it ends. No
// argument is added here: every command lists what it needs itself.
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "Git/Process/GitInstanceType.h"
#include "Git/Process/GitResponse.h"
#include "Git/Process/Task.h"
#include "Models/GitModule.h"

class Cancelable;
class JobProgress;

using LineHandler = std::function<void(const QString&)>;

struct GitRequest {
  std::optional<QString> workingDirectory;
  QStringList arguments;
  std::optional<QString> sshKeyPath;
  bool noPrompt = false;

  GitRequest() = default;
  GitRequest(std::optional<QString> directory, QStringList args) : workingDirectory(std::move(directory)), arguments(std::move(args)) {}
  GitRequest(const GitModule& module, QStringList args) : workingDirectory(module.repositoryPath), arguments(std::move(args)) {}

  // stdout and stderr read to their ends.
  GitResponse execute(bool suppressErrorLogging = false, Cancelable* cancelationToken = nullptr) const;
  // Also records the command line and output in the progress and sets its final state.
  GitResponse executeWithProgress(JobProgress& progress, bool suppressErrorLogging = false) const;
  // stdout as a line reader (chunk 4096, line feed, UTF-8) while git runs; stderr inherited.
  GitStreamReaderResponse executeWithReader() const;
  // stdout kept as bytes; optional bytes on stdin and extra environment.
  GitDataResponse executeData(const std::optional<QByteArray>& stdInput = std::nullopt, Cancelable* cancelationToken = nullptr,
                              const std::optional<QHash<QString, QString>>& environmentVariables = std::nullopt) const;
  // Both pipes line by line, carriage returns ending lines too (chunk 16).
  GitResponse executeWithHandlers(const LineHandler& outputPipeHandler, const LineHandler& errorPipeHandler,
                                  Cancelable* cancellationToken = nullptr) const;

  // The environment a git child gets, for the given instance.
  Task::Environment environment(const GitInstanceType& instance) const;
};

struct ShellRequest {
  std::optional<QString> workingDirectory;
  QString launchPath;
  QStringList arguments;

  ShellStringResponse execute() const;
  ShellStringResponse executeWithHandlers(const LineHandler& outputPipeHandler, const LineHandler& errorPipeHandler,
                                          JobProgress* progress = nullptr) const;

  static Task::Environment environment(const GitInstanceType& instance);
};

// Test hook: the seconds that the per-line variants wait for their readers after exit.
void setPipeGroupTimeoutForTesting(double seconds);
