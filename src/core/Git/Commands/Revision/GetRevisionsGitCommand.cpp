#include "Git/Commands/Revision/GetRevisionsGitCommand.h"

#include "Git/Commands/Revision/RevisionLogStream.h"
#include "Jobs/JobProgress.h"
#include "Services/Preferences.h"

namespace {
const QString kStopwatch = QStringLiteral("GetRevisionsGitCommand");
}

int GetRevisionsGitCommand::maxCommitCount() { return Preferences::shared().maxCommitCount(); }

bool GetRevisionsGitCommand::useTopologicalCommitOrder() { return Preferences::shared().useTopologicalCommitOrder(); }

QStringList GetRevisionsGitCommand::arguments(bool topoOrder, bool showReflog, int maxCommitCount, bool includeHead) {
  QStringList args{QStringLiteral("log")};
  if (includeHead) args << QStringLiteral("HEAD");
  args << QStringLiteral("--branches") << QStringLiteral("--remotes") << QStringLiteral("--tags")
       << QStringLiteral("--max-count=%1").arg(maxCommitCount) << QStringLiteral("--no-show-signature");
  if (showReflog) args << QStringLiteral("--reflog");
  args << (topoOrder ? QStringLiteral("--topo-order") : QStringLiteral("--date-order"));
  args << QStringLiteral("--pretty=format:%H%n%T%n%P%n%an%n%ae%n%at%n%s");
  return args;
}

GitResult<RevisionList> GetRevisionsGitCommand::execute(const GitModule& module, bool topoOrder, bool showReflog,
                                                        JobProgress& progress, std::optional<int> maxCommitCount, bool includeHead) {
  progress.start(kStopwatch);
  RevisionLogParser parser(RevisionLogParser::Format::revisions, &progress);
  auto failure = RevisionLogStream::run(
      module, arguments(topoOrder, showReflog, maxCommitCount.value_or(GetRevisionsGitCommand::maxCommitCount()), includeHead), parser);
  progress.end(kStopwatch);
  if (failure) return *failure;
  return parser.takeRevisions();
}
