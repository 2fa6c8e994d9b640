#include "Commands/ShowCreatePartialStashSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/StashSheetController.h"

void ShowCreatePartialStashSheetCommand::execute(const CommandContext& context) {
  if (context.paths.isEmpty()) return;
  auto* sheet = new StashSheetController(context.module(), StashSheetController::Mode::paths, context.paths);
  CommandFlow::showSheet(context, sheet, Subdomain::stashes() | Subdomain::repositoryStatus());
}
