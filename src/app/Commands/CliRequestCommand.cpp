#include "Commands/CliRequestCommand.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>

#include "Commands/CommandContext.h"
#include "Commands/ShowFileHistorySheetCommand.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Logging/AdvancedLogger.h"
#include "UI/JelvDocument.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"

namespace {

void showError(JelvDocumentController& documents, const QString& text) {
  auto* alert = new QMessageBox(QMessageBox::Warning, QObject::tr("Command line"), text, QMessageBox::Ok,
                                documents.frontWindow());
  alert->setObjectName(QStringLiteral("cliError"));
  alert->setAttribute(Qt::WA_DeleteOnClose);
  alert->open();
}

// The page is chosen through the sidebar, as the toolbar does, so that both mark it. A
// tab that has just opened has no sidebar entries before its first snapshot: the page
// shows at once and the sidebar follows then.
void whenSidebarIsBuilt(JelvDocument& repository, std::function<void(RepositorySidebar&)> select) {
  if (repository.sidebar()->localChangesItem()) {
    select(*repository.sidebar());
    return;
  }
  QObject::connect(&repository, &JelvDocument::snapshotLoaded, &repository,
                   [&repository, select] { select(*repository.sidebar()); }, Qt::SingleShotConnection);
}

void showLocalChanges(JelvDocument& repository) {
  repository.showLocalChanges();
  whenSidebarIsBuilt(repository, [](RepositorySidebar& sidebar) { sidebar.setCurrentItem(sidebar.localChangesItem()); });
}

void showHistory(JelvDocument& repository) {
  repository.showHistory();
  whenSidebarIsBuilt(repository, [](RepositorySidebar& sidebar) {
    // A branch chosen in the sidebar shows the history too: it stays chosen.
    if (!sidebar.currentItem() || sidebar.currentItem() == sidebar.localChangesItem()) {
      sidebar.setCurrentItem(sidebar.allCommitsItem());
    }
  });
}

QString insideOrEmpty(const QString& root, const QString& file) {
  const QString relative = QDir(root).relativeFilePath(file);
  if (relative.startsWith(QStringLiteral("../")) || relative == QStringLiteral("..") || QDir::isAbsolutePath(relative)) {
    return {};
  }
  return relative == QStringLiteral(".") ? QString() : relative;
}

}  // namespace

QString CliRequestCommand::repositoryRelativePath(const QString& repositoryPath, const QString& absoluteFile) {
  QString relative = insideOrEmpty(repositoryPath, absoluteFile);
  // git reports the top level with symbolic links resolved; the user may have typed them.
  if (relative.isEmpty()) {
    const QString root = QFileInfo(repositoryPath).canonicalFilePath();
    const QFileInfo file(absoluteFile);
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    if (!root.isEmpty() && !folder.isEmpty()) relative = insideOrEmpty(root, folder + QLatin1Char('/') + file.fileName());
  }
  if (!relative.isEmpty() && QFileInfo(absoluteFile).isDir()) relative += QLatin1Char('/');
  return relative;
}

void CliRequestCommand::execute(JelvDocumentController& documents, const CliCommand& command, std::function<void()> done) {
  if (!done) done = [] {};
  if (command.verbose) LOG_INFO(QStringLiteral("Command line request for '%1'").arg(command.repositoryPath));
  if (const auto* error = std::get_if<CliError>(&command.type)) {
    LOG_WARNING(QStringLiteral("Command line request failed: ") + error->error);
    showError(documents, error->error);
    done();
    return;
  }
  documents.openRepository(command.repositoryPath, [&documents, type = command.type, done](JelvWindowController* tab) {
    JelvDocument* repository = tab ? tab->document() : nullptr;
    if (!repository) {
      // The refusal has been shown by the opening itself.
      done();
      return;
    }
    documents.bringToFront(tab);
    if (std::holds_alternative<CliStatus>(type)) showLocalChanges(*repository);
    if (const auto* log = std::get_if<CliLog>(&type)) {
      showHistory(*repository);
      if (log->filepath) {
        const QString path = repositoryRelativePath(repository->gitModule().repositoryPath, *log->filepath);
        if (path.isEmpty()) {
          showError(documents, QObject::tr("'%1' is not inside the repository '%2'.")
                                   .arg(*log->filepath, repository->gitModule().repositoryPath));
        } else {
          CommandContext context = CommandContext::forRepository(repository);
          context.paths = {path};
          ShowFileHistorySheetCommand::execute(context);
        }
      }
    }
    done();
  });
}
