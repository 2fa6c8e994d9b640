#include "Commands/PopStashCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Stash/StashGitCommand.h"

void PopStashCommand::execute(const CommandContext& context) {
  if (!context.stash) return;
  const GitModule module = context.module();
  const QString stash = context.stash->reflogName();
  CommandFlow::run(context, QStringLiteral("Pop stash"), Subdomain::stashes() | Subdomain::repositoryStatus(),
                   [module, stash](JobProgress& progress) { return StashGitCommand::apply(module, stash, true, &progress); });
}
