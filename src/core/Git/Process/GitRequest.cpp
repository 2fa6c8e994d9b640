#include "Git/Process/GitRequest.h"

#include "Git/ErrorClassification.h"

#include <QDir>
#include <QFileInfo>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <unistd.h>

#include "Consts.h"
#include "Jobs/Cancelable.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"
#include "Services/Preferences.h"

namespace {

std::atomic<double> pipeGroupTimeoutSeconds{10.0};

const QString kCannotDecodeError = QStringLiteral("Cannot decode error. Unknown encoding.");

bool directoryExists(const QString& path) {
  QFileInfo info(path);
  return info.exists() && info.isDir();
}

void removeDebugSwitches(Task::Environment& env) {
  env.remove(QStringLiteral("MallocStackLogging"));
  env.remove(QStringLiteral("MallocStackLoggingNoCompact"));
  env.remove(QStringLiteral("NSZombieEnabled"));
}

// Every prompt goes through the ask-pass helper: ssh would otherwise prefer a terminal
// and git fall back to one, and a child reading the terminal of a window-less process
// waits forever.
void setPromptVariables(Task::Environment& env) {
  env.set(QStringLiteral("SSH_ASKPASS_REQUIRE"), QStringLiteral("force"));
  env.set(QStringLiteral("GIT_TERMINAL_PROMPT"), QStringLiteral("0"));
}

std::optional<QString> execPathFor(const GitInstanceType& instance) {
  if (instance.kind == GitInstanceType::Kind::system) return std::nullopt;
  const QString gitPath = instance.launchPath();
  QString resolved = QFileInfo(gitPath).canonicalFilePath();
  if (resolved.isEmpty()) resolved = gitPath;
  // <prefix>/bin/git -> <prefix>/libexec/git-core
  QDir dir = QFileInfo(resolved).dir();
  dir.cdUp();
  return QDir::cleanPath(dir.absolutePath() + QStringLiteral("/libexec/git-core"));
}

QString decodeErrorText(const QByteArray& bytes) {
  if (bytes.isEmpty()) return {};
  auto text = decodeString(bytes);
  return text ? *text : kCannotDecodeError;
}

std::shared_ptr<Task> makeGitTask(const GitRequest& request, const GitInstanceType& instance) {
  auto task = std::make_shared<Task>();
  task->launchPath = instance.launchPath();
  task->arguments = request.arguments;
  task->environment = request.environment(instance);
  if (request.workingDirectory) task->currentDirectory = *request.workingDirectory;
  return task;
}

void installCancelationAction(Cancelable* source, const std::shared_ptr<Task>& task) {
  if (!source) return;
  const bool onlyWhenRunning = source->interruptsOnlyWhenRunning();
  std::weak_ptr<Task> weak = task;
  source->setCancelationAction([weak, onlyWhenRunning] {
    if (auto t = weak.lock()) {
      if (!onlyWhenRunning || t->isRunning()) t->interrupt();
    }
  });
}

// A cancel that came before the child existed still stops it.
void interruptIfAlreadyCanceled(Cancelable* source, Task& task) {
  if (source && source->isCanceled()) task.interrupt();
}

std::optional<GitResponseError> checkWorkingDirectory(const std::optional<QString>& directory) {
  if (directory && !directoryExists(*directory)) {
    LOG_ERROR(QStringLiteral("Working directory '%1' doesn't exist.").arg(*directory));
    return GitResponseError{GitResponseError::Kind::workingDirectoryNotExists, *directory, 0, {}, {}};
  }
  return std::nullopt;
}

GitResponseError launchFailure(const Task& task, const QString& why) {
  const QString message = QStringLiteral("Cannot launch '%1': %2").arg(task.launchPath, why);
  LOG_ERROR(message);
  return GitResponseError{GitResponseError::Kind::unknownError, {}, 127, {}, message};
}

bool isCanceled(Cancelable* source) { return source && source->isCanceled(); }

GitResponse classify(const QStringList& arguments, int status, const QByteArray& out, const QString& errorText,
                     bool suppressErrorLogging, Cancelable* source) {
  GitResponse response;
  auto outText = decodeString(out);
  if (!outText) {
    response.failure = GitResponseError{GitResponseError::Kind::cannotEncodeOutput, {}, 0, {}, {}};
    return response;
  }
  if (status < 1) {
    response.output = std::move(*outText);
    response.errorOutput = errorText;
    return response;
  }
  if (!suppressErrorLogging && !isCanceled(source)) {
    LOG_WARNING(QStringLiteral("Git error '%1':\n%2").arg(arguments.join(QLatin1Char(' ')), errorText));
  }
  response.failure = GitResponseError{GitResponseError::Kind::unknownError, {}, status, *outText, errorText};
  return response;
}

// Reads one pipe line by line on its own thread. The caller waits for it a bounded time
// after the child's exit; a reader that outlives that wait stops calling the handler.
class LinePump {
 public:
  template <typename MakeReader>
  static std::shared_ptr<LinePump> start(int fd, MakeReader makeReader, LineHandler handler, const char* cannotCreateMessage) {
    auto pump = std::make_shared<LinePump>();
    std::thread([pump, fd, makeReader, handler = std::move(handler), cannotCreateMessage]() mutable {
      auto reader = makeReader(fd);
      if (!reader) {
        LOG_ERROR(QString::fromUtf8(cannotCreateMessage));
      } else {
        while (auto line = reader->nextLine()) {
          std::lock_guard lock(pump->mutex_);
          if (pump->abandoned_) continue;  // keep draining so the writer never blocks
          if (handler) handler(*line);
          pump->accumulated_ += *line;
          pump->accumulated_ += QLatin1Char('\n');
        }
        reader->close();
      }
      std::lock_guard lock(pump->mutex_);
      pump->done_ = true;
      pump->cv_.notify_all();
    }).detach();
    return pump;
  }

  // Waits until the reader ended or the deadline passed; gives what accumulated.
  bool waitUntil(std::chrono::steady_clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    const bool finished = cv_.wait_until(lock, deadline, [this] { return done_; });
    if (!finished) abandoned_ = true;
    return finished;
  }
  QString text() {
    std::lock_guard lock(mutex_);
    return accumulated_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable cv_;
  bool done_ = false;
  bool abandoned_ = false;
  QString accumulated_;
};

auto deadlineAfterExit() {
  return std::chrono::steady_clock::now() +
         std::chrono::milliseconds(static_cast<long>(pipeGroupTimeoutSeconds.load() * 1000.0));
}

auto makeLineReader(qsizetype chunk) {
  return [chunk](int fd) { return StreamLineReader::create(fd, QStringLiteral("\n"), TextEncoding::utf8, chunk); };
}

auto makePushReader(qsizetype chunk) {
  return [chunk](int fd) { return PushStreamLineReader::create(fd, TextEncoding::utf8, chunk); };
}

}  // namespace

void setPipeGroupTimeoutForTesting(double seconds) { pipeGroupTimeoutSeconds = seconds; }

ResultError toResultError(const GitResponseError& error) {
  switch (error.kind) {
    case GitResponseError::Kind::workingDirectoryNotExists: return Error::GitWorkingDirectoryNotExists{error.directory};
    case GitResponseError::Kind::unknownError: return ErrorClassification::classify(error.output, error.error);
    case GitResponseError::Kind::cannotEncodeOutput: return Error::GitCannotEncodeOutput{};
  }
  return Error::Unknown{};
}

ResultError toResultError(const ShellResponseError& error) {
  switch (error.kind) {
    case ShellResponseError::Kind::launchPathIsNotExecutable: return Error::LaunchPathIsNotExecutable{error.path};
    case ShellResponseError::Kind::workingDirectoryNotExists: return Error::GitWorkingDirectoryNotExists{error.directory};
    case ShellResponseError::Kind::unknownError: return Error::GitUnknownError{error.output, error.error};
    case ShellResponseError::Kind::cannotEncodeOutput: return Error::GitCannotEncodeOutput{};
  }
  return Error::Unknown{};
}

int GitStreamReaderResponse::finish() {
  if (outputReader) outputReader->close();
  return task ? task->waitForExit() : 0;
}

Task::Environment GitRequest::environment(const GitInstanceType& instance) const {
  Task::Environment env = Task::Environment::current();
  env.set(QStringLiteral("DISPLAY"), QStringLiteral("NONE"));
  env.set(QStringLiteral("SSH_ASKPASS"), Consts::Git::askPassPath());
  setPromptVariables(env);
  if (sshKeyPath) env.set(QStringLiteral("GIT_SSH_COMMAND"), QStringLiteral("ssh -i '%1' -F '/dev/null'").arg(*sshKeyPath));
  env.set(QStringLiteral("NO_PROMPT"), noPrompt ? QStringLiteral("1") : QStringLiteral("0"));
  const QString parentPath = env.value(QStringLiteral("PATH")).value_or(QString());
  env.set(QStringLiteral("PATH"), Consts::Git::gitLfsDirectory() + QLatin1Char(':') + Consts::Git::gitFlowDirectory() +
                                      QStringLiteral(":/usr/local/bin:") + parentPath);
  if (auto execPath = execPathFor(instance)) env.set(QStringLiteral("GIT_EXEC_PATH"), *execPath);
  env.set(QStringLiteral("JelvProcessId"), QString::number(::getpid()));
  removeDebugSwitches(env);
  return env;
}

GitResponse GitRequest::execute(bool suppressErrorLogging, Cancelable* cancelationToken) const {
  if (auto failure = checkWorkingDirectory(workingDirectory)) return {failure, {}, {}};
  auto task = makeGitTask(*this, Preferences::shared().gitInstance());
  installCancelationAction(cancelationToken, task);
  QString why;
  if (!task->launch(&why)) return {launchFailure(*task, why), {}, {}};
  interruptIfAlreadyCanceled(cancelationToken, *task);
  QByteArray out, err;
  Task::readBoth(task->takeStdout(), task->takeStderr(), out, err);
  const int status = task->waitForExit();
  return classify(arguments, status, out, decodeErrorText(err), suppressErrorLogging, cancelationToken);
}

GitResponse GitRequest::executeWithProgress(JobProgress& progress, bool suppressErrorLogging) const {
  if (auto failure = checkWorkingDirectory(workingDirectory)) return {failure, {}, {}};
  auto task = makeGitTask(*this, Preferences::shared().gitInstance());
  installCancelationAction(&progress, task);
  progress.logGitCommand(arguments);
  QString why;
  if (!task->launch(&why)) {
    auto failure = launchFailure(*task, why);
    progress.appendOutput(failure.error);
    if (progress.state() != JobProgressState::canceled) progress.setState(JobProgressState::failed);
    return {failure, {}, {}};
  }
  interruptIfAlreadyCanceled(&progress, *task);
  QByteArray out, err;
  Task::readBoth(task->takeStdout(), task->takeStderr(), out, err);
  const int status = task->waitForExit();
  const QString errorText = decodeErrorText(err);
  GitResponse response = classify(arguments, status, out, errorText, true, &progress);
  progress.appendOutput(response.isSuccess() ? response.output : response.failure->output);
  progress.appendOutput(errorText);
  if (status < 1) {
    if (progress.state() != JobProgressState::canceled) progress.setState(JobProgressState::succeeded);
  } else if (!suppressErrorLogging && progress.state() != JobProgressState::canceled) {
    LOG_WARNING(QStringLiteral("Git error '%1':\n%2").arg(arguments.join(QLatin1Char(' ')), errorText));
    progress.setState(JobProgressState::failed);
  }
  return response;
}

GitStreamReaderResponse GitRequest::executeWithReader() const {
  GitStreamReaderResponse response;
  if (auto failure = checkWorkingDirectory(workingDirectory)) {
    response.failure = failure;
    return response;
  }
  auto task = makeGitTask(*this, Preferences::shared().gitInstance());
  QString why;
  if (!task->launch(&why)) {
    response.failure = launchFailure(*task, why);
    return response;
  }
  // stderr stays piped: the reader of the output drains it (task->takeStderr()) and has
  // git's own reason for a failure.
  response.outputReader = StreamLineReader::create(task->takeStdout(), QStringLiteral("\n"), TextEncoding::utf8, 4096);
  response.task = std::move(task);
  return response;
}

GitDataResponse GitRequest::executeData(const std::optional<QByteArray>& stdInput, Cancelable* cancelationToken,
                                        const std::optional<QHash<QString, QString>>& environmentVariables) const {
  GitDataResponse response;
  if (auto failure = checkWorkingDirectory(workingDirectory)) {
    response.failure = failure;
    return response;
  }
  auto task = makeGitTask(*this, Preferences::shared().gitInstance());
  if (environmentVariables) {
    for (auto it = environmentVariables->begin(); it != environmentVariables->end(); ++it) task->environment.set(it.key(), it.value());
  }
  task->pipeStdin = stdInput.has_value();
  installCancelationAction(cancelationToken, task);
  QString why;
  if (!task->launch(&why)) {
    response.failure = launchFailure(*task, why);
    return response;
  }
  interruptIfAlreadyCanceled(cancelationToken, *task);
  // Input goes on its own thread: a child may print before it has read everything.
  std::thread writer;
  if (stdInput) writer = std::thread([fd = task->takeStdin(), data = *stdInput] { Task::writeAllAndClose(fd, data); });
  QByteArray out, err;
  Task::readBoth(task->takeStdout(), task->takeStderr(), out, err);
  const int status = task->waitForExit();
  if (writer.joinable()) writer.join();
  if (cancelationToken) cancelationToken->setCancelationAction(nullptr);
  const QString errorText = decodeErrorText(err);
  if (status < 1) {
    response.data = std::move(out);
    response.errorOutput = errorText;
    return response;
  }
  if (!isCanceled(cancelationToken)) {
    LOG_WARNING(QStringLiteral("Git error '%1':\n%2").arg(arguments.join(QLatin1Char(' ')), errorText));
  }
  response.failure = GitResponseError{GitResponseError::Kind::unknownError, {}, status, decodeString(out).value_or(QString()), errorText};
  // Kept as bytes too: "diff --no-index" reports a difference with status 1.
  response.data = std::move(out);
  return response;
}

GitResponse GitRequest::executeWithHandlers(const LineHandler& outputPipeHandler, const LineHandler& errorPipeHandler,
                                            Cancelable* cancellationToken) const {
  if (auto failure = checkWorkingDirectory(workingDirectory)) return {failure, {}, {}};
  auto task = makeGitTask(*this, Preferences::shared().gitInstance());
  installCancelationAction(cancellationToken, task);
  QString why;
  if (!task->launch(&why)) return {launchFailure(*task, why), {}, {}};
  interruptIfAlreadyCanceled(cancellationToken, *task);
  auto outPump = LinePump::start(task->takeStdout(), makePushReader(16), outputPipeHandler, "Cannot create output stream reader");
  auto errPump = LinePump::start(task->takeStderr(), makePushReader(16), errorPipeHandler, "Cannot create error stream reader");
  const int status = task->waitForExit();
  const auto deadline = deadlineAfterExit();
  const bool outDone = outPump->waitUntil(deadline);
  const bool errDone = errPump->waitUntil(deadline);
  if (!outDone || !errDone) LOG_ERROR(QStringLiteral("Output pipe semaphore group timeout"));
  return classify(arguments, status, outPump->text().toUtf8(), errPump->text(), false, cancellationToken);
}

Task::Environment ShellRequest::environment(const GitInstanceType& instance) {
  Task::Environment env = Task::Environment::current();
  env.set(QStringLiteral("DISPLAY"), QStringLiteral("NONE"));
  env.set(QStringLiteral("SSH_ASKPASS"), Consts::Git::askPassPath());
  setPromptVariables(env);
  const QString parentPath = env.value(QStringLiteral("PATH")).value_or(QString());
  env.set(QStringLiteral("PATH"), QStringLiteral("/usr/local/bin:") + parentPath);
  if (auto execPath = execPathFor(instance)) env.set(QStringLiteral("GIT_EXEC_PATH"), *execPath);
  env.set(QStringLiteral("JelvProcessId"), QString::number(::getpid()));
  removeDebugSwitches(env);
  return env;
}

namespace {

std::optional<ShellResponseError> checkShell(const ShellRequest& request) {
  if (request.workingDirectory && !directoryExists(*request.workingDirectory)) {
    LOG_ERROR(QStringLiteral("Working directory '%1' doesn't exist.").arg(*request.workingDirectory));
    ShellResponseError e;
    e.kind = ShellResponseError::Kind::workingDirectoryNotExists;
    e.directory = *request.workingDirectory;
    return e;
  }
  QFileInfo info(request.launchPath);
  if (!info.isFile() || !info.isExecutable()) {
    LOG_ERROR(QStringLiteral("'%1' is not executable.").arg(request.launchPath));
    ShellResponseError e;
    e.kind = ShellResponseError::Kind::launchPathIsNotExecutable;
    e.path = request.launchPath;
    return e;
  }
  return std::nullopt;
}

std::shared_ptr<Task> makeShellTask(const ShellRequest& request) {
  auto task = std::make_shared<Task>();
  task->launchPath = request.launchPath;
  task->arguments = request.arguments;
  task->environment = ShellRequest::environment(Preferences::shared().gitInstance());
  if (request.workingDirectory) task->currentDirectory = *request.workingDirectory;
  return task;
}

ShellStringResponse classifyShell(const ShellRequest& request, int status, const QByteArray& out, const QString& errorText) {
  ShellStringResponse response;
  auto outText = decodeString(out);
  if (!outText) {
    response.failure = ShellResponseError{ShellResponseError::Kind::cannotEncodeOutput, {}, {}, 0, {}, {}};
    return response;
  }
  if (status < 1) {
    response.output = *outText;
    response.errorOutput = errorText;
    return response;
  }
  LOG_WARNING(QStringLiteral("Shell error %1 '%2':\n%3").arg(request.launchPath, request.arguments.join(QLatin1Char(' ')), errorText));
  response.failure = ShellResponseError{ShellResponseError::Kind::unknownError, {}, {}, status, *outText, errorText};
  return response;
}

ShellStringResponse shellLaunchFailure(const Task& task, const QString& why) {
  ShellStringResponse response;
  const QString message = QStringLiteral("Cannot launch '%1': %2").arg(task.launchPath, why);
  LOG_ERROR(message);
  response.failure = ShellResponseError{ShellResponseError::Kind::unknownError, {}, {}, 127, {}, message};
  return response;
}

}  // namespace

ShellStringResponse ShellRequest::execute() const {
  if (auto failure = checkShell(*this)) return {failure, {}, {}};
  auto task = makeShellTask(*this);
  QString why;
  if (!task->launch(&why)) return shellLaunchFailure(*task, why);
  QByteArray out, err;
  Task::readBoth(task->takeStdout(), task->takeStderr(), out, err);
  const int status = task->waitForExit();
  return classifyShell(*this, status, out, decodeErrorText(err));
}

ShellStringResponse ShellRequest::executeWithHandlers(const LineHandler& outputPipeHandler, const LineHandler& errorPipeHandler,
                                                      JobProgress* progress) const {
  if (auto failure = checkShell(*this)) return {failure, {}, {}};
  auto task = makeShellTask(*this);
  installCancelationAction(progress, task);
  QString why;
  if (!task->launch(&why)) return shellLaunchFailure(*task, why);
  interruptIfAlreadyCanceled(progress, *task);
  auto outPump = LinePump::start(task->takeStdout(), makeLineReader(8), outputPipeHandler, "Cannot create output stream reader");
  auto errPump = LinePump::start(task->takeStderr(), makeLineReader(8), errorPipeHandler, "Cannot create error stream reader");
  const int status = task->waitForExit();
  const auto deadline = deadlineAfterExit();
  const bool outDone = outPump->waitUntil(deadline);
  const bool errDone = errPump->waitUntil(deadline);
  if (!outDone || !errDone) LOG_ERROR(QStringLiteral("Output pipe semaphore group timeout"));
  return classifyShell(*this, status, outPump->text().toUtf8(), errPump->text());
}
