#include "Commands/ShowPushSheetCommand.h"

#include <QPointer>

#include "Commands/CommandFlow.h"
#include "Commands/RemoteJob.h"
#include "Controllers/Sheets/PushWindowController.h"
#include "Models/LocalBranch.h"
#include "Services/Preferences.h"

void ShowPushSheetCommand::push(const CommandContext& context, const QString& jobName, const PushBranchOptions& options) {
  const GitModule module = context.module();
  RemoteJob::schedule(context, jobName, RemoteJob::fetched(),
                      [module, options](JobProgress& progress) { return PushGitCommand::pushBranch(module, options, progress); });
}

void ShowPushSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  LocalBranchPtr select = context.activeBranch();
  if (context.reference && context.reference->kind() == Reference::Kind::localBranch) {
    select = std::static_pointer_cast<const LocalBranch>(context.reference);
  }
  auto* sheet = new PushWindowController(data->remotes, data->references.localBranches, data->references.remoteBranches, select);
  QPointer<PushWindowController> guard(sheet);
  CommandFlow::showSheet(context, sheet, Subdomain::none(), [context, guard](const JelvSheetResult& result) {
    if (result.isSuccess() && guard) push(context, guard->jobName(), guard->options());
  });
}

void QuickPushCommand::execute(const CommandContext& context) {
  const LocalBranchPtr active = context.activeBranch();
  if (!active) return;
  const auto remote = active->remoteName();
  const auto upstream = active->upstreamName();
  if (!remote || !upstream) {
    ShowPushSheetCommand::execute(context);
    return;
  }
  PushBranchOptions options;
  options.remote = *remote;
  options.localFullReference = active->fullReference;
  options.localName = active->name;
  options.remoteBranchName = upstream->mid(remote->size() + 1);
  options.remoteBranchRemote = *remote;
  options.tags = Preferences::shared().pushSheetPushAllTags();
  ShowPushSheetCommand::push(context, QStringLiteral("Push '%1' to '%2'").arg(active->name, *remote), options);
}
