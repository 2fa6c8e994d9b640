#include "Git/Commands/Repository/BisectGitCommand.h"

#include <QRegularExpression>

#include "Git/Commands/RunGitCommand.h"

QStringList BisectGitCommand::arguments(Step step, const QString& revision) {
  QStringList arguments{QStringLiteral("bisect")};
  switch (step) {
    case Step::start: arguments << QStringLiteral("start"); break;
    case Step::reset: arguments << QStringLiteral("reset"); break;
    case Step::good: arguments << QStringLiteral("good"); break;
    case Step::bad: arguments << QStringLiteral("bad"); break;
  }
  if (!revision.isEmpty() && (step == Step::good || step == Step::bad)) arguments << revision;
  return arguments;
}

std::optional<QString> BisectGitCommand::parseFirstBadCommit(const QString& output) {
  static const QRegularExpression pattern(QStringLiteral(R"((?:^|\n)([0-9a-f]{7,64}) is the first bad commit)"));
  const QRegularExpressionMatch match = pattern.match(output);
  if (!match.hasMatch()) return std::nullopt;
  return match.captured(1);
}

GitResult<BisectGitCommand::Outcome> BisectGitCommand::execute(const GitModule& module, Step step, const QString& revision,
                                                               JobProgress* progress) {
  const GitResult<GitResponse> response = runGitCommandWithResponse(module, arguments(step, revision), progress);
  if (!response) return response.error();
  const QString& output = response.value().output;
  return Outcome{parseFirstBadCommit(output), output};
}
