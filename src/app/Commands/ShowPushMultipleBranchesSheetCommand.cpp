#include "Commands/ShowPushMultipleBranchesSheetCommand.h"

#include <QPointer>

#include "Commands/CommandFlow.h"
#include "Commands/RemoteJob.h"
#include "Controllers/Sheets/PushMultipleBranchesWindowController.h"
#include "Git/Commands/Remotes/PushGitCommand.h"
#include "Models/LocalBranch.h"

namespace {

std::vector<LocalBranchPtr> chosenBranches(const CommandContext& context) {
  std::vector<LocalBranchPtr> chosen;
  std::vector<ReferencePtr> references = context.references;
  if (references.empty() && context.reference) references.push_back(context.reference);
  for (const ReferencePtr& reference : references) {
    if (reference && reference->kind() == Reference::Kind::localBranch) chosen.push_back(std::static_pointer_cast<const LocalBranch>(reference));
  }
  if (chosen.empty()) {
    if (LocalBranchPtr active = context.activeBranch()) chosen.push_back(active);
  }
  return chosen;
}

}  // namespace

void ShowPushMultipleBranchesSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  const std::vector<LocalBranchPtr> chosen = chosenBranches(context);
  QStringList checked;
  for (const LocalBranchPtr& branch : chosen) checked << branch->fullReference;
  // The remote the chosen branches track, when the first one tracks any.
  QString remote = context.remote;
  if (remote.isEmpty() && !chosen.empty() && chosen.front()->remoteName()) remote = *chosen.front()->remoteName();
  if (remote.isEmpty()) remote = RemoteJob::defaultRemote(context);
  auto* sheet = new PushMultipleBranchesWindowController(context.module(), data->remotes, remote, data->references.localBranches,
                                                         data->references.remoteBranches, checked);
  QPointer<PushMultipleBranchesWindowController> guard(sheet);
  CommandFlow::showSheet(context, sheet, Subdomain::none(), [context, guard](const JelvSheetResult& result) {
    if (!result.isSuccess() || !guard) return;
    const GitModule module = guard->gitModule();
    const QString remote = guard->remote();
    const QStringList references = guard->fullReferences();
    RemoteJob::schedule(context, guard->jobName(), RemoteJob::fetched(), [module, remote, references](JobProgress& progress) {
      return PushGitCommand::pushBranches(module, remote, references, progress);
    });
  });
}
