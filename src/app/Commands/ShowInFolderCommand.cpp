#include "Commands/ShowInFolderCommand.h"

#include <QMessageBox>

#include "Services/DesktopApplications.h"

void ShowInFolderCommand::execute(QWidget* parent, const QString& folder) {
  const std::optional<QString> failure = DesktopApplications::openFolder(folder);
  if (!failure) return;
  auto* alert = new QMessageBox(QMessageBox::Warning, QObject::tr("Show in Folder"),
                                QObject::tr("The folder \"%1\" could not be shown.").arg(folder), QMessageBox::Ok, parent);
  alert->setObjectName(QStringLiteral("showInFolderAlert"));
  alert->setInformativeText(*failure + QLatin1Char(' ') + QObject::tr("Open it with a file manager of your choice."));
  alert->setAttribute(Qt::WA_DeleteOnClose);
  alert->open();
}
