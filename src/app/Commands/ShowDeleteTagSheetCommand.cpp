#include "Commands/ShowDeleteTagSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/TagRemoteController.h"

namespace {
QStringList remoteNames(const CommandContext& context) {
  QStringList names;
  if (const RepositoryDataPtr data = context.data()) {
    for (const Remote& remote : data->remotes) names << remote.name;
  }
  return names;
}
}  // namespace

void ShowDeleteTagSheetCommand::execute(const CommandContext& context) {
  if (!context.reference || context.reference->kind() != Reference::Kind::tag) return;
  auto* sheet = new TagRemoteController(context.module(), TagRemoteController::Mode::remove, context.reference->name,
                                        context.reference->fullReference, remoteNames(context));
  CommandFlow::showSheet(context, sheet, Subdomain::tags());
}
