#include "Commands/ShowResetBranchSheetCommand.h"

#include <QComboBox>
#include <QPushButton>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Revision/ResetGitCommand.h"
#include "Models/LocalBranch.h"
#include "Commands/SheetChoices.h"

using namespace SheetChoices;

namespace {
const Subdomain everything = Subdomain::all();
}  // namespace

void ShowResetBranchSheetCommand::execute(const CommandContext& context, Mode mode) {
  const RevisionPtr revision = context.revision();
  const auto active = context.activeBranch();
  if (!revision) return;
  const QString sha = revision->sha().toString();
  const QString branch = active ? QStringLiteral("'%1'").arg(active->name) : QStringLiteral("HEAD");
  auto* sheet = new OperationSheetController(QStringLiteral("resetSheet"), QStringLiteral("Reset"),
                                             QStringLiteral("Reset %1 to %2").arg(branch, targetTitle(context)), QStringLiteral("Reset"));
  sheet->addChoice(QStringLiteral("Mode:"),
                   {QStringLiteral("Soft: keep the index and the working tree"), QStringLiteral("Mixed: keep the working tree, reset the index"),
                    QStringLiteral("Hard: discard all local changes")},
                   static_cast<int>(mode));
  const auto warn = [sheet] {
    const bool hard = sheet->choice(0)->currentIndex() == 2;
    sheet->setPermanentWarning(hard ? QStringLiteral("Every uncommitted change in the index and the working tree is lost for good.")
                                    : QString());
    sheet->submitButton()->setText(hard ? QStringLiteral("Reset and Discard Changes") : QStringLiteral("Reset"));
    // Return must not discard anything.
    sheet->submitButton()->setDefault(!hard);
    sheet->cancelButton()->setDefault(hard);
  };
  QObject::connect(sheet->choice(0), &QComboBox::currentIndexChanged, sheet, warn);
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Reset %1 to '%2'").arg(branch, shortSha(sha)), QStringLiteral("Resetting…"),
                      [module, sha](const OperationSheetController& s) {
                        const auto resetMode = static_cast<ResetGitCommand::Mode>(s.choice(0)->currentIndex());
                        return [module, sha, resetMode](JobProgress& progress) { return ResetGitCommand::execute(module, sha, resetMode, &progress); };
                      });
  warn();
  CommandFlow::showSheet(context, sheet, everything);
}
