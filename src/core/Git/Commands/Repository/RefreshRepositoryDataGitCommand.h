#pragma once
// Builds the next RepositoryData from the previous one. The subdomain bits say what may
// have changed; the modification times of "config", ".gitmodules", "logs/HEAD" and
// "hooks/pre-push" let unchanged parts be handed on without starting git. A refresh after
// a small change therefore never reads the log.
#include <functional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/RepositoryData.h"
#include "Models/Subdomain.h"

class JobProgress;

struct RefreshRepositoryDataGitCommand {
  struct Options {
    bool showReflogInRevisionList = false;
    bool showFirstParent = false;
    int maxCommitCount = 0;  // 0: the preference's
    // Called on the calling thread just before the history is read, with everything
    // else of the new data in place: the history is most of the time, so a caller can
    // read the status meanwhile.
    std::function<void(const RepositoryData&)> beforeHistory = {};
  };

  // Without `old` every part is read. Fails with `noChanges` when nothing that the views
  // show differs from `old` (and the history wasn't asked for), with `canceled` when the
  // progress was canceled between two steps.
  static GitResult<RepositoryDataPtr> execute(const GitModule& module, const RepositoryDataPtr& old, Subdomain subdomains,
                                              Options options, JobProgress& progress);

  // The marker that the Git LFS hook contains.
  static bool isGitLfsHook(const QByteArray& hook);
};
