#include "Commands/RevisionFileCommands.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>

#include "Commands/CommandFlow.h"
#include "Controllers/CommitList/CommitListView.h"
#include "UI/JelvDocument.h"
#include "Git/Commands/WorkingDirectory/CheckoutFileVersionGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Services/ExternalDiff.h"
#include "Services/Preferences.h"

namespace {

QString revisionOf(const CommandContext& context) { return context.revision() ? context.revision()->sha().toString() : QString(); }

}  // namespace

void OpenFileAtRevisionCommand::execute(const CommandContext& context) {
  const QString sha = revisionOf(context);
  if (sha.isEmpty() || context.paths.isEmpty()) return;
  const QString path = context.paths.front();
  // Named after the file and the commit, so that the application's title says which.
  const QString destination = QDir(ExternalDiff::newFolder()).filePath(ExternalDiff::sideFileName(path, sha.left(7)));
  const GitModule module = context.module();
  CommandFlow::run(
      context, QStringLiteral("Open '%1' at %2").arg(path, sha.left(7)), Subdomain::none(),
      [module, sha, path, destination](JobProgress&) -> GitVoidResult {
        const auto written = CheckoutFileVersionGitCommand::execute(module, sha, path, destination);
        if (!written) return written.error();
        return Unit{};
      },
      [destination](const GitVoidResult& result) {
        if (result) QDesktopServices::openUrl(QUrl::fromLocalFile(destination));
      });
}

void SaveFileAtRevisionCommand::execute(const CommandContext& context) {
  const QString sha = revisionOf(context);
  if (sha.isEmpty() || context.paths.isEmpty()) return;
  const QString path = context.paths.front();
  const QString suggested = QDir(QDir::homePath()).filePath(QFileInfo(path).fileName());
  const QString destination = QFileDialog::getSaveFileName(context.window, QObject::tr("Save As"), suggested);
  if (destination.isEmpty()) return;
  const GitModule module = context.module();
  CommandFlow::run(context, QStringLiteral("Save '%1' at %2").arg(path, sha.left(7)), Subdomain::none(),
                   [module, sha, path, destination](JobProgress&) -> GitVoidResult {
                     const auto written = CheckoutFileVersionGitCommand::execute(module, sha, path, destination);
                     if (!written) return written.error();
                     return Unit{};
                   });
}

void ExternalDiffAtRevisionCommand::execute(const CommandContext& context, const ChangedFilePtr& file) {
  const RevisionPtr revision = context.revision();
  const std::shared_ptr<JobQueue> queue = context.queue();
  if (!revision || !file || !queue) return;
  std::optional<QString> parent;
  if (!revision->parents().empty()) parent = revision->parents().front().toString();
  const GitModule module = context.module();
  const QString sha = revision->sha().toString();
  QPointer<QWidget> window = context.window;
  queue->schedule(Job::make(QStringLiteral("External diff"), Job::Show::none(), Job::ProgressType::infinite,
                            [module, sha, parent, file, window](JobProgress&) {
                              const auto failure = ExternalDiff::runForRevision(module, sha, parent, *file, Preferences::shared());
                              if (!failure) return;
                              postQueuedCall(qApp, [window, text = *failure] {
                                if (!window) return;
                                auto* alert = new QMessageBox(QMessageBox::Warning, QObject::tr("Cannot open the file"), text,
                                                              QMessageBox::Ok, window);
                                alert->setAttribute(Qt::WA_DeleteOnClose);
                                alert->open();
                              });
                            }));
}

void BrowseFilesAtRevisionCommand::execute(const CommandContext& context) {
  const RevisionPtr revision = context.revision();
  if (!context.repository || !revision) return;
  context.repository->showHistory();
  context.repository->commitList()->selectSha(revision->sha());
  context.repository->showRevisionFileTree();
}
