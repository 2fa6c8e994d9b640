#include "Commands/ShowMergeBranchSheetCommand.h"

#include <QComboBox>

#include <QCheckBox>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Merge/MergeGitCommand.h"
#include "Models/LocalBranch.h"
#include "Commands/SheetChoices.h"

using namespace SheetChoices;

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowMergeBranchSheetCommand::execute(const CommandContext& context) {
  const auto active = context.activeBranch();
  if (!active) return;
  auto* sheet = new OperationSheetController(QStringLiteral("mergeSheet"), QStringLiteral("Merge"),
                                             QStringLiteral("Merge into '%1'").arg(active->name), QStringLiteral("Merge"));
  addTargetChoice(sheet, QStringLiteral("Merge:"), context);
  sheet->addOption(QStringLiteral("Create a merge commit even when a fast-forward is possible"), true, QStringLiteral("noFastForwardOnMerge"));
  sheet->addOption(QStringLiteral("Squash the commits into staged changes, without committing"), false);
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const QString into = active->name;
  sheet->setValidator(needsTarget);
  sheet->setOperation(QStringLiteral("Merge into '%1'").arg(into), QStringLiteral("Merging…"),
                      [module, signingKey](const OperationSheetController& s) {
                        MergeGitCommand::Options options;
                        options.noFastForward = s.option(0)->isChecked();
                        options.squash = s.option(1)->isChecked();
                        options.signingKey = signingKey;
                        const QString reference = chosenTarget(s.choice(0));
                        return [module, reference, options](JobProgress& progress) {
                          return MergeGitCommand::execute(module, reference, options, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}
