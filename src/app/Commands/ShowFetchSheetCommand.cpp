#include "Commands/ShowFetchSheetCommand.h"

#include <QPointer>

#include "Commands/CommandFlow.h"
#include "Commands/RemoteJob.h"
#include "Controllers/Sheets/FetchWindowController.h"
#include "Services/Preferences.h"

void ShowFetchSheetCommand::fetch(const CommandContext& context, const QString& remote, bool allRemotes, const FetchOptions& options) {
  if (!allRemotes && remote.isEmpty()) return;
  const FetchTarget target = allRemotes ? FetchTarget::all() : FetchTarget::ofRemote(remote);
  const QString name = allRemotes ? QStringLiteral("Fetch all remotes") : QStringLiteral("Fetch '%1'").arg(remote);
  const GitModule module = context.module();
  RemoteJob::schedule(context, name, RemoteJob::fetched(),
                      [module, target, options](JobProgress& progress) { return FetchGitCommand::execute(module, target, options, progress); });
}

void ShowFetchSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  auto* sheet = new FetchWindowController(data->remotes, RemoteJob::defaultRemote(context));
  QPointer<FetchWindowController> guard(sheet);
  CommandFlow::showSheet(context, sheet, Subdomain::none(), [context, guard](const JelvSheetResult& result) {
    if (!result.isSuccess() || !guard) return;
    const FetchWindowController::Values v = guard->values();
    FetchOptions options;
    options.prune = v.prune;
    options.tags = v.tags;
    fetch(context, v.remote, v.allRemotes, options);
  });
}

void QuickFetchCommand::execute(const CommandContext& context) {
  auto& preferences = Preferences::shared();
  FetchOptions options;
  options.prune = preferences.fetchSheetPrune();
  options.tags = preferences.fetchSheetFetchAllTags();
  ShowFetchSheetCommand::fetch(context, RemoteJob::defaultRemote(context), preferences.fetchSheetFetchAllRemotes(), options);
}
