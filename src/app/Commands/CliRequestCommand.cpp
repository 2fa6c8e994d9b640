#include "Commands/CliRequestCommand.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>

#include "Commands/CommandContext.h"
#include "Commands/ShowFileHistorySheetCommand.h"
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
    if (std::holds_alternative<CliStatus>(type)) repository->selectLocalChanges();
    if (const auto* log = std::get_if<CliLog>(&type)) {
      repository->selectHistory();
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
