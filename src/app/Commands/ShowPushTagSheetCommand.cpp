#include "Commands/ShowPushTagSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/TagRemoteController.h"

void ShowPushTagSheetCommand::execute(const CommandContext& context) {
  if (!context.reference || context.reference->kind() != Reference::Kind::tag) return;
  QStringList remotes;
  if (const RepositoryDataPtr data = context.data()) {
    for (const Remote& remote : data->remotes) remotes << remote.name;
  }
  auto* sheet = new TagRemoteController(context.module(), TagRemoteController::Mode::push, context.reference->name,
                                        context.reference->fullReference, remotes);
  CommandFlow::showSheet(context, sheet, Subdomain::none());
}
