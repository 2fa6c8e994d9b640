#include "Commands/ShowRenameLocalBranchSheetCommand.h"

#include <QCheckBox>
#include <QLineEdit>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Git/Commands/Repository/RenameBranchGitCommand.h"
#include "Models/LocalBranch.h"
#include "Models/ReferenceNameCheck.h"

void ShowRenameLocalBranchSheetCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  if (!branch) return;
  const QString oldName = branch->name;
  QStringList others = context.localBranchNames();
  others.removeAll(oldName);
  const std::optional<QString> remote = branch->remoteName();
  auto* sheet = new OperationSheetController(QStringLiteral("renameBranchSheet"), QStringLiteral("Rename Branch"),
                                             QStringLiteral("Rename branch '%1'").arg(oldName), QStringLiteral("Rename"));
  sheet->addField(QStringLiteral("New name:"), oldName);
  if (remote) sheet->addOption(QStringLiteral("Also rename the branch on '%1'").arg(*remote), false);
  sheet->setValidator([others, oldName, remote](const OperationSheetController& s) -> std::optional<QString> {
    const QString name = s.field(0)->text().trimmed();
    if (auto problem = ReferenceNameCheck::problem(name)) return problem;
    if (name == oldName) return QStringLiteral("Enter a new name");
    return ReferenceNameCheck::clash(name, others);
  });
  if (remote) {
    // A warning that does not stop the rename.
    QObject::connect(sheet->option(0), &QCheckBox::toggled, sheet, [sheet](bool on) {
      sheet->setPermanentWarning(on ? QStringLiteral("Renaming can break tracking references for other users") : QString());
    });
  }
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Rename branch '%1'").arg(oldName), QStringLiteral("Renaming…"),
                      [module, oldName, remote](const OperationSheetController& s) {
                        const QString newName = s.field(0)->text().trimmed();
                        const std::optional<QString> onRemote = remote && s.option(0)->isChecked() ? remote : std::nullopt;
                        return [module, oldName, newName, onRemote](JobProgress& progress) {
                          return RenameBranchGitCommand::execute(module, oldName, newName, onRemote, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, Subdomain::head() | Subdomain::references() | Subdomain::referenceSettings());
}
