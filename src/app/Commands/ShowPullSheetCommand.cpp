#include "Commands/ShowPullSheetCommand.h"

#include <QPointer>

#include "Commands/CommandFlow.h"
#include "Commands/RemoteJob.h"
#include "Controllers/Sheets/PullWindowController.h"
#include "Models/LocalBranch.h"
#include "Services/Preferences.h"

void ShowPullSheetCommand::pull(const CommandContext& context, const PullOptions& options) {
  const GitModule module = context.module();
  RemoteJob::schedule(context, QStringLiteral("Pull '%1/%2'").arg(options.remote, options.branch), RemoteJob::pulled(),
                      [module, options](JobProgress& progress) { return PullGitCommand::run(module, options, progress); });
}

void ShowPullSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  const LocalBranchPtr active = context.activeBranch();
  if (!data || !active) return;
  auto* sheet = new PullWindowController(data->remotes, data->references.remoteBranches, active->upstreamName(), active->name,
                                         PullGitCommand::hasSubmodules(context.module()));
  QPointer<PullWindowController> guard(sheet);
  CommandFlow::showSheet(context, sheet, Subdomain::none(), [context, guard](const JelvSheetResult& result) {
    if (!result.isSuccess() || !guard) return;
    const PullWindowController::Values v = guard->values();
    pull(context, {v.remote, v.branch, v.rebase, v.stashAndReapply,
                   guard->submodulesExist() && Preferences::shared().updateSubmodulesAutomatically()});
  });
}

void QuickPullCommand::execute(const CommandContext& context) {
  const LocalBranchPtr active = context.activeBranch();
  if (!active) return;
  const auto remote = active->remoteName();
  const auto upstream = active->upstreamName();
  // Without an upstream there is nothing to pull from without asking.
  if (!remote || !upstream) {
    ShowPullSheetCommand::execute(context);
    return;
  }
  auto& preferences = Preferences::shared();
  ShowPullSheetCommand::pull(context, {*remote, upstream->mid(remote->size() + 1), preferences.pullSheetRebase(),
                                       preferences.pullSheetStashAndReapply(), preferences.updateSubmodulesAutomatically()});
}
