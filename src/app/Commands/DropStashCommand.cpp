#include "Commands/DropStashCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Stash/StashGitCommand.h"

void DropStashCommand::execute(const CommandContext& context) {
  if (!context.stash) return;
  const GitModule module = context.module();
  const QString stash = context.stash->reflogName();
  CommandFlow::confirm(context, QStringLiteral("Delete Stash"),
                       QStringLiteral("The changes saved in stash '%1' will be lost. You can't undo this action.").arg(context.stash->message()),
                       QStringLiteral("Delete Stash"), [context, module, stash] {
                         CommandFlow::run(context, QStringLiteral("Delete stash"), Subdomain::stashes(),
                                          [module, stash](JobProgress& progress) { return StashGitCommand::drop(module, stash, &progress); });
                       });
}
