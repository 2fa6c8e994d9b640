#include "Commands/ShowDeleteRemoteBranchSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Remotes/PushGitCommand.h"
#include "Models/RemoteBranch.h"

void ShowDeleteRemoteBranchSheetCommand::execute(const CommandContext& context) {
  if (!context.reference || context.reference->kind() != Reference::Kind::remoteBranch) return;
  const auto branch = std::static_pointer_cast<const RemoteBranch>(context.reference);
  const GitModule module = context.module();
  const QString remote = branch->remote;
  const QString name = branch->name;
  CommandFlow::confirm(context, QStringLiteral("Delete Remote Branch"),
                       QStringLiteral("Branch '%1' will be deleted on remote '%2' for everyone who uses it. "
                                      "Commits that only this branch holds can no longer be fetched from there.")
                           .arg(name, remote),
                       QStringLiteral("Delete on Remote"), [context, module, remote, name] {
                         CommandFlow::run(context, QStringLiteral("Delete '%1' on '%2'").arg(name, remote),
                                          Subdomain::remoteBranches() | Subdomain::revisions(), [module, remote, name](JobProgress& progress) {
                                            return PushGitCommand::deleteReference(module, remote, QStringLiteral("refs/heads/") + name, progress);
                                          });
                       });
}
