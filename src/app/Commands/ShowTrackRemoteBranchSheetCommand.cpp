#include "Commands/ShowTrackRemoteBranchSheetCommand.h"

#include <QLineEdit>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Repository/CheckoutGitCommand.h"
#include "Models/ReferenceNameCheck.h"
#include "Models/RemoteBranch.h"

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowTrackRemoteBranchSheetCommand::execute(const CommandContext& context) {
  const auto* remoteBranch = dynamic_cast<const RemoteBranch*>(context.reference.get());
  if (!remoteBranch) return;
  const QString remoteName = remoteBranch->fullName;  // "origin/topic"
  const QString localName = remoteBranch->name;
  const QStringList locals = context.localBranchNames();
  const bool twin = locals.contains(localName);
  auto* sheet = new OperationSheetController(QStringLiteral("trackRemoteBranchSheet"), QStringLiteral("Checkout"),
                                             QStringLiteral("Check out '%1'").arg(remoteName), QStringLiteral("Checkout"));
  if (twin) {
    sheet->setInformativeText(QStringLiteral("The local branch '%1' exists. It is checked out and fast-forwarded to '%2'; if it "
                                             "has commits of its own, git refuses and nothing changes.")
                                  .arg(localName, remoteName));
  } else {
    sheet->setInformativeText(QStringLiteral("A local branch is made that tracks '%1'.").arg(remoteName));
    sheet->addField(QStringLiteral("Local name:"), localName);
    sheet->setValidator([locals](const OperationSheetController& s) -> std::optional<QString> {
      const QString name = s.field(0)->text().trimmed();
      if (auto problem = ReferenceNameCheck::problem(name)) return problem;
      return ReferenceNameCheck::clash(name, locals);
    });
  }
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Checkout '%1'").arg(remoteName), QStringLiteral("Checking out…"),
                      [module, twin, localName, remoteName](const OperationSheetController& s) -> OperationSheetController::Work {
                        if (twin) {
                          return [module, localName, remoteName](JobProgress& progress) {
                            return CheckoutGitCommand::checkoutAndFastForward(module, localName, remoteName, &progress);
                          };
                        }
                        const QString name = s.field(0)->text().trimmed();
                        return [module, name, remoteName](JobProgress& progress) {
                          return CheckoutGitCommand::track(module, name, remoteName, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}
