#include "Commands/RemoveRemoteCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Remotes/RemoteGitCommand.h"

void RemoveRemoteCommand::execute(const CommandContext& context) {
  if (context.remote.isEmpty()) return;
  const GitModule module = context.module();
  const QString name = context.remote;
  CommandFlow::confirm(context, QStringLiteral("Remove Remote"),
                       QStringLiteral("Remote '%1' and its remote-tracking branches will be removed from this repository. "
                                      "The repository it points to is not changed.")
                           .arg(name),
                       QStringLiteral("Remove"), [context, module, name] {
                         CommandFlow::run(context, QStringLiteral("Remove remote '%1'").arg(name),
                                          Subdomain::remotes() | Subdomain::remoteBranches() | Subdomain::revisions(),
                                          [module, name](JobProgress& progress) { return RemoteGitCommand::remove(module, name, &progress); });
                       });
}
