#include "Commands/ShowRemoveLocalBranchSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Models/LocalBranch.h"

void ShowRemoveLocalBranchSheetCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  if (!branch || branch->isActive) return;
  const QString name = branch->name;
  const GitModule module = context.module();
  const Subdomain changed = Subdomain::head() | Subdomain::references() | Subdomain::revisions();
  CommandFlow::confirm(context, QStringLiteral("Delete Branch"),
                       QStringLiteral("Delete the branch '%1'? Its commits stay where other branches or tags hold them.").arg(name),
                       QStringLiteral("Delete"), [context, module, name, changed] {
                         CommandFlow::run(
                             context, QStringLiteral("Delete branch '%1'").arg(name), changed,
                             [module, name](JobProgress& progress) { return BranchGitCommand::remove(module, name, false, &progress); },
                             {}, [context, module, name, changed](const ResultError& error) {
                               // Not merged: say what is lost, then force if the user agrees.
                               if (!std::holds_alternative<Error::BranchNotFullyMerged>(error)) return false;
                               CommandFlow::confirm(context, QStringLiteral("Delete Unmerged Branch"),
                                                    QStringLiteral("The branch '%1' is not fully merged. Commits that only this branch "
                                                                   "holds will be lost.")
                                                        .arg(name),
                                                    QStringLiteral("Delete Anyway"), [context, module, name, changed] {
                                                      CommandFlow::run(context, QStringLiteral("Delete branch '%1'").arg(name), changed,
                                                                       [module, name](JobProgress& progress) {
                                                                         return BranchGitCommand::remove(module, name, true, &progress);
                                                                       });
                                                    });
                               return true;
                             });
                       });
}
