#include "Commands/ApplyPatchCommand.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include "Commands/CommandFlow.h"
#include "Git/Commands/WorkingDirectory/ApplyPatchGitCommand.h"
#include "Services/Preferences.h"

void ApplyPatchCommand::execute(const CommandContext& context) {
  if (!context.window) return;
  auto* panel = new QFileDialog(context.window, QStringLiteral("Apply Patch"),
                                Preferences::shared().recentPatchDirectory().value_or(QDir::homePath()),
                                QStringLiteral("Patches (*.patch *.diff);;All Files (*)"));
  panel->setObjectName(QStringLiteral("applyPatchPanel"));
  panel->setFileMode(QFileDialog::ExistingFile);
  panel->setAcceptMode(QFileDialog::AcceptOpen);
  panel->setLabelText(QFileDialog::Accept, QStringLiteral("Apply"));
  panel->setAttribute(Qt::WA_DeleteOnClose);
  panel->setWindowModality(Qt::WindowModal);
  QObject::connect(panel, &QFileDialog::fileSelected, panel, [context](const QString& file) {
    if (file.isEmpty()) return;
    Preferences::shared().setRecentPatchDirectory(QFileInfo(file).absolutePath());
    const GitModule module = context.module();
    CommandFlow::run(context, QStringLiteral("Apply patch"), Subdomain::repositoryStatus(),
                     [module, file](JobProgress& progress) { return ApplyPatchGitCommand::execute(module, file, &progress); });
  });
  panel->open();
}
