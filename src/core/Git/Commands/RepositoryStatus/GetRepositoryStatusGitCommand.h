#pragma once
// The status snapshot: what git is in the middle of, and the changed files.
#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Reference.h"
#include "Models/RepositoryStatus.h"
#include "Models/Submodule.h"

class JobProgress;

struct GetRepositoryStatusGitCommand {
  // `references` name the commits of the marker files; `submodules` mark their entries.
  static GitResult<RepositoryStatus> execute(const GitModule& module, const ReferenceList& references, const SubmoduleList& submodules,
                                             bool hideUntrackedFiles, bool showIgnoredFiles, JobProgress& progress);
};
