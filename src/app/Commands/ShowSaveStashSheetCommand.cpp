#include "Commands/ShowSaveStashSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/StashSheetController.h"

void ShowSaveStashSheetCommand::execute(const CommandContext& context) {
  auto* sheet = new StashSheetController(context.module(), StashSheetController::Mode::save);
  CommandFlow::showSheet(context, sheet, Subdomain::stashes() | Subdomain::repositoryStatus());
}
