#include "Commands/ShowCherryPickSheetCommand.h"

#include <QComboBox>

#include <QCheckBox>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Revision/CherryPickGitCommand.h"
#include "Commands/SheetChoices.h"

using namespace SheetChoices;

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowCherryPickSheetCommand::execute(const CommandContext& context) {
  if (context.revisions.empty()) return;
  // The list shows newest first; picks go oldest first so they apply in history order.
  QStringList shas;
  for (auto it = context.revisions.rbegin(); it != context.revisions.rend(); ++it) shas << (*it)->sha().toString();
  const bool single = shas.size() == 1;
  auto* sheet = new OperationSheetController(
      QStringLiteral("cherryPickSheet"), QStringLiteral("Cherry-Pick"),
      single ? QStringLiteral("Cherry-pick %1").arg(targetTitle(context)) : QStringLiteral("Cherry-pick %1 commits").arg(shas.size()),
      QStringLiteral("Cherry-Pick"));
  sheet->setInformativeText(QStringLiteral("The changes are applied on top of the checked-out commit."));
  sheet->addOption(QStringLiteral("Commit the changes at once"), true);
  const QStringList parents = single ? parentChoices(context.revision()) : QStringList{};
  if (!parents.isEmpty()) sheet->addChoice(QStringLiteral("Mainline parent:"), parents);
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const bool merge = !parents.isEmpty();
  sheet->setOperation(single ? QStringLiteral("Cherry-pick '%1'").arg(shortSha(shas.first())) : QStringLiteral("Cherry-pick %1 commits").arg(shas.size()),
                      QStringLiteral("Cherry-picking…"), [module, shas, signingKey, merge](const OperationSheetController& s) {
                        CherryPickGitCommand::Options options;
                        options.commit = s.option(0)->isChecked();
                        options.signingKey = signingKey;
                        if (merge) options.parentNumber = s.choice(0)->currentIndex() + 1;
                        return [module, shas, options](JobProgress& progress) {
                          return CherryPickGitCommand::execute(module, shas, options, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}
