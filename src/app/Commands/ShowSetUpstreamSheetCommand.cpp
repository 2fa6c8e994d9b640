#include "Commands/ShowSetUpstreamSheetCommand.h"

#include <QComboBox>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Models/LocalBranch.h"

void ShowSetUpstreamSheetCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  const RepositoryDataPtr data = context.data();
  if (!branch || !data) return;
  QStringList upstreams;
  for (const auto& remoteBranch : data->references.remoteBranches) upstreams << remoteBranch->fullName;
  const QString name = branch->name;
  const int current = branch->upstreamName() ? std::max(0, int(upstreams.indexOf(*branch->upstreamName()))) : 0;
  auto* sheet = new OperationSheetController(QStringLiteral("setUpstreamSheet"), QStringLiteral("Set Upstream"),
                                             QStringLiteral("Set the upstream of '%1'").arg(name), QStringLiteral("Set Upstream"));
  sheet->addChoice(QStringLiteral("Upstream:"), upstreams, current);
  sheet->setValidator([](const OperationSheetController& s) -> std::optional<QString> {
    if (s.choice(0)->count() == 0) return QStringLiteral("There is no remote branch to track");
    return std::nullopt;
  });
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Set upstream of '%1'").arg(name), QStringLiteral("Setting upstream…"),
                      [module, name](const OperationSheetController& s) {
                        const QString upstream = s.choice(0)->currentText();
                        return [module, name, upstream](JobProgress& progress) {
                          return BranchGitCommand::setUpstream(module, name, upstream, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, Subdomain::references());
}
