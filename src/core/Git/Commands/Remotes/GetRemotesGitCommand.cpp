#include "Git/Commands/Remotes/GetRemotesGitCommand.h"

#include <QRegularExpression>

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

namespace {

// Gathers the lines of one remote until the name changes.
struct PendingRemote {
  QString name;
  std::optional<RepositoryUrl> url;
  bool disableImplicitFetch = false;
};

void flush(std::optional<PendingRemote>& pending, std::vector<Remote>& remotes) {
  if (pending && pending->url) remotes.push_back(Remote{pending->name, *pending->url, pending->disableImplicitFetch});
  pending.reset();
}

}  // namespace

QStringList GetRemotesGitCommand::arguments() {
  return {QStringLiteral("config"), QStringLiteral("--get-regexp"), QStringLiteral("^remote\\..*")};
}

std::vector<Remote> GetRemotesGitCommand::parse(const QString& output) {
  // The name is matched lazily: a dotted remote name ("my.fork") still ends at the
  // last key, while a value with ". x" in it (a path with a blank) can't move the split.
  static const QRegularExpression pattern(QStringLiteral(R"(remote\.(.*?)\.(\w+)\s(.*))"));
  std::vector<Remote> remotes;
  std::optional<PendingRemote> pending;
  const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  for (const QString& line : lines) {
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch()) {
      LOG_ERROR(QStringLiteral("Cannot parse remote config line: '%1'").arg(line));
      continue;
    }
    const QString name = match.captured(1);
    const QString key = match.captured(2);
    const QString value = match.captured(3);
    if (!pending || pending->name != name) {
      flush(pending, remotes);
      pending = PendingRemote{name, std::nullopt, false};
    }
    if (key == QLatin1String("url")) {
      RepositoryUrl url(value);
      // A remote that is a relative path has no URL form; it stays a remote all the same.
      if (!url.url) LOG_ERROR(QStringLiteral("Cannot parse remote line '%1'").arg(line));
      pending->url = std::move(url);
    } else if (key == QLatin1String("disableimplicitfetch")) {
      pending->disableImplicitFetch = value == QLatin1String("true");
    }
  }
  flush(pending, remotes);
  return remotes;
}

GitResult<std::vector<Remote>> GetRemotesGitCommand::execute(const GitModule& module) {
  const GitResponse response = GitRequest(module, arguments()).execute(true);
  if (!response.isSuccess()) {
    // "config --get-regexp" exits with 1 when nothing matches: a repository without
    // remotes, not a failure.
    const GitResponseError& error = *response.failure;
    if (error.kind == GitResponseError::Kind::unknownError && error.status == 1 && error.output.isEmpty() &&
        error.error.isEmpty()) {
      return std::vector<Remote>{};
    }
    if (error.kind == GitResponseError::Kind::unknownError) {
      LOG_WARNING(QStringLiteral("Git error '%1':\n%2").arg(arguments().join(QLatin1Char(' ')), error.error));
    }
    return failureResult<std::vector<Remote>>(response);
  }
  return parse(response.output);
}
