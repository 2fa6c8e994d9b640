#include "Git/Commands/Revision/GetFileHistoryGitCommand.h"

#include "Git/Commands/Revision/RevisionParser.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/Cancelable.h"

QStringList GetFileHistoryGitCommand::arguments(const QString& path, const std::optional<QString>& limit) {
  // Paths as they are, not octal-quoted.
  QStringList args = {QStringLiteral("-c"), QStringLiteral("core.quotepath=false"), QStringLiteral("log"),
                      QStringLiteral("--no-show-signature"), QStringLiteral("--oneline"), QStringLiteral("--name-status")};
  if (!isFolder(path)) args << QStringLiteral("--follow");
  args << QStringLiteral("--pretty=format:%H%n%T%n%P%n%an%n%ae%n%at%n%s");
  if (limit) args << *limit;
  args << QStringLiteral("--") << path;
  return args;
}

GitResult<std::vector<RevisionWithFiles>> GetFileHistoryGitCommand::execute(const GitModule& module, const QString& path,
                                                                            const std::optional<QString>& limit,
                                                                            Cancelable* cancelation) {
  const GitResponse response = GitRequest(module, arguments(path, limit)).execute(false, cancelation);
  if (cancelation && cancelation->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<std::vector<RevisionWithFiles>>(response);
  return parse(response.output);
}

std::vector<RevisionWithFiles> GetFileHistoryGitCommand::parse(const QString& output) {
  const QStringList lines = output.split(QLatin1Char('\n'));
  RevisionParser parser;
  std::vector<RevisionWithFiles> history;
  qsizetype index = 0;
  while (index < lines.size()) {
    if (lines.at(index).isEmpty()) {
      ++index;
      continue;
    }
    RevisionPtr revision = parser.parseRevision(lines, index);
    if (!revision) continue;
    RevisionWithFiles entry{std::move(revision), {}};
    // Files up to the empty line; a commit that lists none (a merge) is followed at once
    // by the next record, which has no tab.
    while (index < lines.size() && lines.at(index).contains(QLatin1Char('\t'))) {
      if (ChangedFilePtr file = RevisionParser::readChangedFile(lines.at(index))) entry.changedFiles.push_back(std::move(file));
      ++index;
    }
    history.push_back(std::move(entry));
  }
  return history;
}
