#include "Commands/ShowEditRemoteSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/RemoteController.h"

void ShowEditRemoteSheetCommand::execute(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  std::optional<RemoteGitCommand::Edit> editing;
  QStringList others;
  for (const Remote& remote : data->remotes) {
    if (remote.name == context.remote) {
      editing = RemoteGitCommand::Edit{remote.name, remote.repositoryUrl.rawUrlString, remote.disableImplicitFetch};
    } else {
      others << remote.name;
    }
  }
  if (!editing) return;
  auto* sheet = new RemoteController(context.module(), editing, others);
  // A rename moves the remote-tracking branches.
  CommandFlow::showSheet(context, sheet, Subdomain::remotes() | Subdomain::remoteBranches() | Subdomain::revisions());
}
