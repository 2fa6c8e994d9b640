#include "Commands/ShowCreateBranchSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/CreateBranchController.h"
#include "Models/Tag.h"

void ShowCreateBranchSheetCommand::execute(const CommandContext& context) {
  QString start = QStringLiteral("HEAD");
  QString title = QStringLiteral("the checked-out commit");
  if (context.reference) {
    start = context.reference->fullReference;
    title = QStringLiteral("'%1'").arg(context.reference->name);
  } else if (const RevisionPtr revision = context.revision()) {
    start = revision->sha().toString();
    title = QStringLiteral("%1 %2").arg(start.left(7), revision->message().section(QLatin1Char('\n'), 0, 0));
  }
  auto* sheet = new CreateBranchController(context.module(), start, title, context.localBranchNames());
  CommandFlow::showSheet(context, sheet, Subdomain::head() | Subdomain::references() | Subdomain::revisions() | Subdomain::repositoryStatus());
}
