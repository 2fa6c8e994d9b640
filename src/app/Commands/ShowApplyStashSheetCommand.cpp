#include "Commands/ShowApplyStashSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/ApplyStashController.h"

void ShowApplyStashSheetCommand::execute(const CommandContext& context) {
  if (!context.stash) return;
  auto* sheet = new ApplyStashController(context.module(), context.stash->reflogName(), context.stash->message());
  CommandFlow::showSheet(context, sheet, Subdomain::stashes() | Subdomain::repositoryStatus());
}
