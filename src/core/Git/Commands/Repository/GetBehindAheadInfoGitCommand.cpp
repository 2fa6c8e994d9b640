#include "Git/Commands/Repository/GetBehindAheadInfoGitCommand.h"

#include <QRegularExpression>

#include "Extensions/DecimalInteger.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/Cancelable.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"

BehindAheadInfoCache GetBehindAheadInfoGitCommand::parse(const QString& output) {
  // "[ahead 2, behind 1]", "[ahead 2]", "[behind 3]"; "[gone]" doesn't match.
  static const QRegularExpression pattern(QStringLiteral(R"(^\[(ahead (\d+))?,? ?(behind (\d+))?\])"));
  BehindAheadInfoCache cache;
  const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  for (const QString& line : lines) {
    const QStringList fields = line.split(QLatin1Char('\t'), Qt::SkipEmptyParts);
    if (fields.size() != 2) continue;
    const QRegularExpressionMatch match = pattern.match(fields.at(1));
    if (!match.hasMatch()) {
      LOG_ERROR(QStringLiteral("Cannot parse behind/ahead line '%1'").arg(line));
      continue;
    }
    const auto count = [&match](int group) -> int {
      if (!match.hasCaptured(group)) return 0;
      return static_cast<int>(DecimalInteger::parse(match.capturedView(group)).value_or(0));
    };
    cache.entries.insert(fields.at(0), BehindAheadInfo{count(4), count(2)});
  }
  return cache;
}

GitResult<BehindAheadInfoCache> GetBehindAheadInfoGitCommand::execute(const GitModule& module, Cancelable* cancellationToken,
                                                                      JobProgress* progress) {
  static const QString stopwatch = QStringLiteral("GetBehindAheadInfoGitCommand");
  if (progress) progress->start(stopwatch);
  const GitRequest request(module, {QStringLiteral("for-each-ref"), QStringLiteral("refs/heads/"),
                                    QStringLiteral("--format=%(refname)\t%(upstream:track)")});
  const GitResponse response = request.execute(false, cancellationToken);
  if (progress) progress->end(stopwatch);
  if (!response.isSuccess()) {
    if (cancellationToken && cancellationToken->isCanceled()) return Error::Canceled{};
    return failureResult<BehindAheadInfoCache>(response);
  }
  return parse(response.output);
}
