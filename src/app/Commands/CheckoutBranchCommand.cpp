#include "Commands/CheckoutBranchCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Repository/CheckoutGitCommand.h"

void CheckoutBranchCommand::execute(const CommandContext& context) {
  if (!context.reference) return;
  const GitModule module = context.module();
  const QString name = context.reference->name;
  CommandFlow::run(context, QStringLiteral("Checkout '%1'").arg(name), Subdomain::all(),
                   [module, name](JobProgress& progress) { return CheckoutGitCommand::checkout(module, name, &progress); });
}
