#pragma once
// The jobs of fetch, pull and push: their sheets close as soon as the job is scheduled,
// the job shows its progress in the status bar and the activity manager, and when it
// ends the references are read again and a failure opens the error sheet on the tab.
#include <QString>
#include <functional>

#include "Commands/CommandContext.h"
#include "Git/ResultError.h"
#include "Models/Subdomain.h"

class JobProgress;

namespace RemoteJob {

// What a fetch may change.
inline Subdomain fetched() { return Subdomain::references() | Subdomain::revisions() | Subdomain::remotes(); }
// What a pull or a push may change besides.
inline Subdomain pulled() { return fetched() | Subdomain::head() | Subdomain::stashes() | Subdomain::repositoryStatus() | Subdomain::submodules(); }

void schedule(const CommandContext& context, const QString& name, Subdomain changed, std::function<GitVoidResult(JobProgress&)> work,
              std::function<void(const GitVoidResult&)> after = {});

// "origin" when the repository has it, else its first remote; empty without remotes.
QString defaultRemote(const CommandContext& context);

}  // namespace RemoteJob
