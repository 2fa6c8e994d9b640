#include "Commands/ShowAddRemoteSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/RemoteController.h"

void ShowAddRemoteSheetCommand::execute(const CommandContext& context) {
  QStringList names;
  if (const RepositoryDataPtr data = context.data()) {
    for (const Remote& remote : data->remotes) names << remote.name;
  }
  auto* sheet = new RemoteController(context.module(), std::nullopt, names);
  CommandFlow::showSheet(context, sheet, Subdomain::remotes());
}
