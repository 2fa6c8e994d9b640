#include "Git/Commands/Remotes/RemoteOperation.h"

#include <mutex>

#include "Git/ErrorClassification.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"

QString RemoteOperation::verb(Kind kind) {
  switch (kind) {
    case Kind::fetch: return QStringLiteral("fetching...");
    case Kind::pull: return QStringLiteral("pulling...");
    case Kind::push:
    case Kind::pushMultiple: return QStringLiteral("pushing...");
    case Kind::clone: return QStringLiteral("cloning...");
  }
  return {};
}

QString RemoteOperation::failureMessage(Kind kind) {
  switch (kind) {
    case Kind::fetch: return QStringLiteral("fetch failed");
    case Kind::pull: return QStringLiteral("pull failed");
    case Kind::push:
    case Kind::pushMultiple: return QStringLiteral("push failed");
    case Kind::clone: return QStringLiteral("clone failed");
  }
  return {};
}

ResultError RemoteOperation::classify(Kind kind, const QString& output, const QString& error, const GitModule& module,
                                      const std::optional<QString>& remote) {
  // The push of several branches knows only two of git's refusals.
  const QStringList accessPhrases = kind == Kind::pushMultiple
                                        ? QStringList{QStringLiteral("make sure you have the correct access rights"),
                                                      QStringLiteral("Authentication failed")}
                                        : QStringList{QStringLiteral("make sure you have the correct access rights"),
                                                      QStringLiteral("HTTP Basic: Access denied"),
                                                      QStringLiteral("Authentication failed")};
  for (const QString& phrase : accessPhrases) {
    if (error.contains(phrase)) return Error::ConnectionError{error};
  }
  if ((kind == Kind::fetch || kind == Kind::pull) && remote && error.contains(QStringLiteral("would clobber existing tag"))) {
    return Error::TagMismatch{output, error, module, *remote};
  }
  return ErrorClassification::classify(output, error);
}

GitVoidResult RemoteOperation::run(const GitModule& module, const QStringList& arguments, JobProgress& progress) const {
  GitRequest request(workingDirectory ? workingDirectory : std::optional<QString>(module.repositoryPath), arguments);
  request.noPrompt = noPrompt;
  progress.logGitCommand(arguments);
  progress.update(0, verb(kind), JobProgressState::inProgress);

  // The handlers run on the pipes' reader threads.
  std::mutex lock;
  QString messages;
  QString output;
  const bool isPush = kind == Kind::push || kind == Kind::pushMultiple;
  auto onError = [&](const QString& chunk) {
    if (progress.isCanceled()) return;
    if (progress.parseGitProgress(chunk)) return;
    if (isPush && chunk.trimmed().isEmpty()) return;
    if (chunk.isEmpty()) return;  // the second half of a CR LF pair
    progress.appendOutput(chunk);
    std::lock_guard guard(lock);
    messages += chunk;
    messages += QLatin1Char('\n');
  };
  auto onOutput = [&](const QString& line) {
    if (line.isEmpty()) return;
    progress.appendOutput(line);
    std::lock_guard guard(lock);
    output += line;
    output += QLatin1Char('\n');
  };
  const GitResponse response = request.executeWithHandlers(onOutput, onError, &progress);
  if (progress.isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) {
    progress.update(100, failureMessage(kind), JobProgressState::failed);
    const GitResponseError& failure = *response.failure;
    if (failure.kind != GitResponseError::Kind::unknownError) return toResultError(failure);
    std::lock_guard guard(lock);
    return classify(kind, output.trimmed(), messages.trimmed(), module, remote);
  }
  progress.update(100, QString(), JobProgressState::succeeded);
  return Unit{};
}
