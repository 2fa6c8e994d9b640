#include "Commands/ShowRevertSheetCommand.h"

#include <QComboBox>

#include <QCheckBox>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Revision/RevertGitCommand.h"
#include "Commands/SheetChoices.h"

using namespace SheetChoices;

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowRevertSheetCommand::execute(const CommandContext& context) {
  const RevisionPtr revision = context.revision();
  if (!revision) return;
  const QString sha = revision->sha().toString();
  auto* sheet = new OperationSheetController(QStringLiteral("revertSheet"), QStringLiteral("Revert"),
                                             QStringLiteral("Revert %1").arg(targetTitle(context)), QStringLiteral("Revert"));
  sheet->setInformativeText(QStringLiteral("A new commit undoes the changes of this one; history is kept."));
  sheet->addOption(QStringLiteral("Commit the reverting changes at once"), true);
  const QStringList parents = parentChoices(revision);
  if (!parents.isEmpty()) sheet->addChoice(QStringLiteral("Mainline parent:"), parents);
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const bool merge = !parents.isEmpty();
  sheet->setOperation(QStringLiteral("Revert '%1'").arg(shortSha(sha)), QStringLiteral("Reverting…"),
                      [module, sha, signingKey, merge](const OperationSheetController& s) {
                        RevertGitCommand::Options options;
                        options.commit = s.option(0)->isChecked();
                        options.signingKey = signingKey;
                        if (merge) options.parentNumber = s.choice(0)->currentIndex() + 1;
                        return [module, sha, options](JobProgress& progress) { return RevertGitCommand::execute(module, sha, options, &progress); };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}
