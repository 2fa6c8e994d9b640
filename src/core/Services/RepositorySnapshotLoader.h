#pragma once
// Reads everything a repository tab shows in one go: references, history, stashes,
// ahead/behind counts, submodules, the state and the changed files. A plain full read;
// the incremental refresh with its file-time shortcuts replaces it where it is wired.
#include <memory>

#include "Git/ResultError.h"
#include "Graph/RevisionGraphSource.h"
#include "Models/BehindAheadInfoCache.h"
#include "Models/GitModule.h"
#include "Models/RepositoryStatus.h"
#include "Models/Submodule.h"

class JobProgress;

struct RepositorySnapshot {
  std::shared_ptr<const RevisionGraphSource> graph;
  BehindAheadInfoCache aheadBehind;
  SubmoduleList submodules;
  RepositoryStatus status;
};

class RepositorySnapshotLoader {
 public:
  // Fails with `canceled` when the progress was canceled between two reads.
  static GitResult<RepositorySnapshot> load(const GitModule& module, JobProgress& progress, const RevisionGraphOptions& options);
  // The state and the changed files alone, for the quick status updates.
  static GitResult<RepositoryStatus> loadStatus(const GitModule& module, const ReferenceList& references,
                                                const SubmoduleList& submodules, JobProgress& progress);
  // A module for the repository at a folder, asking git for the git directory; fails
  // for a folder that isn't inside a work tree.
  static GitResult<GitModule> moduleForPath(const QString& path);
};
