#pragma once
// The status snapshot: what git is in the middle of, and the changed files.
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Reference.h"
#include "Models/RepositoryStatus.h"
#include "Models/Submodule.h"

class JobProgress;

struct GetRepositoryStatusGitCommand {
  // `references` name the commits of the marker files; `submodules` mark their entries.
  // With `knownState` only the changed files are read and the state is taken as given.
  static GitResult<RepositoryStatus> execute(const GitModule& module, const ReferenceList& references, const SubmoduleList& submodules,
                                             bool hideUntrackedFiles, bool showIgnoredFiles, JobProgress& progress,
                                             const std::optional<RepositoryState>& knownState = std::nullopt);
};
