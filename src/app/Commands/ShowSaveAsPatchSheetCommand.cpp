#include "Commands/ShowSaveAsPatchSheetCommand.h"

#include <QDir>
#include <QFileDialog>

#include "Commands/CommandFlow.h"
#include "Git/Commands/Revision/FormatPatchGitCommand.h"
#include "Services/Preferences.h"

void ShowSaveAsPatchSheetCommand::execute(const CommandContext& context) {
  if (context.revisions.empty() || !context.window) return;
  // The list is newest first: a range runs from the last chosen to the first.
  const QString newest = context.revisions.front()->sha().toString();
  const QString oldest = context.revisions.back()->sha().toString();
  const bool oldestIsRoot = context.revisions.back()->parents().empty();
  const int count = static_cast<int>(context.revisions.size());

  auto* panel = new QFileDialog(context.window, count == 1 ? QStringLiteral("Save Commit as Patch") : QStringLiteral("Save %1 Commits as Patches").arg(count),
                                Preferences::shared().recentPatchDirectory().value_or(QDir::homePath()));
  panel->setObjectName(QStringLiteral("saveAsPatchPanel"));
  panel->setFileMode(QFileDialog::Directory);
  panel->setOption(QFileDialog::ShowDirsOnly);
  panel->setAcceptMode(QFileDialog::AcceptOpen);
  panel->setLabelText(QFileDialog::Accept, QStringLiteral("Save"));
  panel->setAttribute(Qt::WA_DeleteOnClose);
  panel->setWindowModality(Qt::WindowModal);
  QObject::connect(panel, &QFileDialog::fileSelected, panel, [context, newest, oldest, oldestIsRoot, count](const QString& folder) {
    if (folder.isEmpty()) return;
    Preferences::shared().setRecentPatchDirectory(folder);
    const GitModule module = context.module();
    CommandFlow::run(context, count == 1 ? QStringLiteral("Save patch") : QStringLiteral("Save %1 patches").arg(count), Subdomain::none(),
                     [module, folder, newest, oldest, oldestIsRoot](JobProgress& progress) -> GitVoidResult {
                       const GitResult<QStringList> written = FormatPatchGitCommand::execute(module, folder, oldest, newest, oldestIsRoot, &progress);
                       if (!written) return written.error();
                       return Unit{};
                     });
  });
  panel->open();
}
