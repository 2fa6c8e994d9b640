#include "Commands/ShowCheckoutRevisionSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Repository/CheckoutGitCommand.h"
#include "Commands/SheetChoices.h"

using namespace SheetChoices;

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowCheckoutRevisionSheetCommand::execute(const CommandContext& context) {
  const QString target = context.reference ? context.reference->name : targetArgument(context);
  if (target.isEmpty()) return;
  auto* sheet = new OperationSheetController(QStringLiteral("checkoutRevisionSheet"), QStringLiteral("Checkout"),
                                             QStringLiteral("Check out %1").arg(targetTitle(context)), QStringLiteral("Checkout"));
  sheet->setInformativeText(QStringLiteral("No branch will be checked out (a detached HEAD). Commits made there belong to no "
                                           "branch; create a branch to keep them."));
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Checkout '%1'").arg(target.left(40)), QStringLiteral("Checking out…"),
                      [module, target](const OperationSheetController&) {
                        return [module, target](JobProgress& progress) { return CheckoutGitCommand::checkout(module, target, &progress); };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}
