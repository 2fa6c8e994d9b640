#include "Commands/ShowRebaseSheetCommand.h"

#include <QComboBox>

#include <QCheckBox>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Merge/RebaseGitCommand.h"
#include "Models/LocalBranch.h"
#include "Commands/SheetChoices.h"

using namespace SheetChoices;

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowRebaseSheetCommand::execute(const CommandContext& context) {
  const auto active = context.activeBranch();
  if (!active) return;
  auto* sheet = new OperationSheetController(QStringLiteral("rebaseSheet"), QStringLiteral("Rebase"),
                                             QStringLiteral("Rebase '%1'").arg(active->name), QStringLiteral("Rebase"));
  sheet->setInformativeText(QStringLiteral("The commits of '%1' that the target lacks are replayed on top of it and get new "
                                           "identities. Do not rebase commits that others already have.")
                                .arg(active->name));
  addTargetChoice(sheet, QStringLiteral("Onto:"), context);
  sheet->addOption(QStringLiteral("Stash local changes before and apply them after"), false, QStringLiteral("rebaseSheetAutostash"));
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const QString branch = active->name;
  sheet->setValidator(needsTarget);
  sheet->setOperation(QStringLiteral("Rebase '%1'").arg(branch), QStringLiteral("Rebasing…"),
                      [module, signingKey](const OperationSheetController& s) {
                        const QString onto = chosenTarget(s.choice(0));
                        const bool autostash = s.option(0)->isChecked();
                        return [module, onto, autostash, signingKey](JobProgress& progress) {
                          return RebaseGitCommand::execute(module, onto, autostash, signingKey, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}
