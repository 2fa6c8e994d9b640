#include "Commands/ShowSaveSnapshotSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/StashSheetController.h"

void ShowSaveSnapshotSheetCommand::execute(const CommandContext& context) {
  auto* sheet = new StashSheetController(context.module(), StashSheetController::Mode::snapshot);
  CommandFlow::showSheet(context, sheet, Subdomain::stashes());
}
