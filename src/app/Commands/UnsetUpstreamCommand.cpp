#include "Commands/UnsetUpstreamCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Models/LocalBranch.h"

void UnsetUpstreamCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  if (!branch) return;
  const GitModule module = context.module();
  const QString name = branch->name;
  CommandFlow::run(context, QStringLiteral("Unset upstream of '%1'").arg(name), Subdomain::references(),
                   [module, name](JobProgress& progress) { return BranchGitCommand::setUpstream(module, name, {}, &progress); });
}
