#include "Commands/ShowRepositoryCustomCommandsSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/RepositoryCustomCommandsController.h"

void ShowRepositoryCustomCommandsSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  auto* sheet = new RepositoryCustomCommandsController(context.module(), data->customCommands);
  CommandFlow::showSheet(context, sheet, Subdomain::customCommands());
}
