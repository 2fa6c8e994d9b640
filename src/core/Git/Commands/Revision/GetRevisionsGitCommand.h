#pragma once
// The visible history: every revision reachable from HEAD, the branches, remote
// branches and tags (and the reflog on request), streamed from one "git log".
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Revision.h"

class JobProgress;

struct GetRevisionsGitCommand {
  // Without `includeHead` (an unborn HEAD) only the branches, remote branches and tags.
  static QStringList arguments(bool topoOrder, bool showReflog, int maxCommitCount, bool includeHead = true);
  // Reads the preference maxCommitCount (default 50000). Records a stopwatch on the
  // progress and stops with `canceled` when it is canceled.
  // `maxCommitCount` overrides the preference.
  static GitResult<RevisionList> execute(const GitModule& module, bool topoOrder, bool showReflog, JobProgress& progress,
                                         std::optional<int> maxCommitCount = std::nullopt, bool includeHead = true);
  // The preferences' values: maxCommitCount and useTopologicalCommitOrder.
  static int maxCommitCount();
  static bool useTopologicalCommitOrder();
};
