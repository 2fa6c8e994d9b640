#include "Git/Commands/Revision/GetRevisionDetailsGitCommand.h"

#include "Extensions/DecimalInteger.h"
#include "Git/Process/GitRequest.h"

namespace {
const QString kSeparator = QStringLiteral("±.");
}

QStringList GetRevisionDetailsGitCommand::arguments(const QString& sha) {
  return {QStringLiteral("show"), QStringLiteral("-s"),
          QStringLiteral("--pretty=format:%H±.%an±.%ae±.%at±.%cn±.%ce±.%ct±.%P±.%B"), sha};
}

GitResult<RevisionDetails> GetRevisionDetailsGitCommand::parse(const QString& output) {
  const QStringList parts = output.split(kSeparator);
  if (parts.size() != 9) {
    return Error::CannotParse{QStringLiteral("Cannot parse revision details output: '%1'.").arg(output)};
  }
  const auto authorTime = DecimalInteger::parse(QStringView(parts.at(3)));
  const auto committerTime = DecimalInteger::parse(QStringView(parts.at(6)));
  if (!authorTime || !committerTime) return Error::CannotParse{QStringLiteral("Cannot parse revision details dates.")};
  RevisionDetails details;
  details.sha = parts.at(0);
  details.author = parts.at(1);
  details.authorEmail = parts.at(2);
  details.authorDate = QDateTime::fromSecsSinceEpoch(*authorTime, Qt::UTC);
  details.committer = parts.at(4);
  details.committerEmail = parts.at(5);
  details.committerDate = QDateTime::fromSecsSinceEpoch(*committerTime, Qt::UTC);
  details.parents = parts.at(7).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  details.message = parts.at(8);
  return details;
}

GitResult<RevisionDetails> GetRevisionDetailsGitCommand::execute(const GitModule& module, const QString& sha) {
  const GitResponse response = GitRequest(module, arguments(sha)).execute();
  if (!response.isSuccess()) return failureResult<RevisionDetails>(response);
  return parse(response.output);
}
