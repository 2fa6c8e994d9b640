#include "Controllers/History/RevisionFilesMenu.h"

#include <QMenu>

#include "Commands/CommandTable.h"
#include "Commands/ContextMenus.h"
#include "Commands/RevisionFileCommands.h"
#include "UI/JelvDocument.h"

QMenu* RevisionFilesMenu::make(JelvDocument* repository, const RevisionPtr& revision, const ChangedFilePtr& file) {
  auto* menu = new QMenu(repository);
  menu->setObjectName(QStringLiteral("revisionFilesMenu"));
  CommandContext context = CommandContext::forRepository(repository);
  context.revisions = {revision};
  context.paths = {file->path};
  // A file the commit deleted is not there to blame, open or save; its history still is.
  if (file->changeType == ChangeType::deleted) {
    CommandTable::addActions(menu, {QStringLiteral("fileHistory")}, context);
  } else {
    CommandTable::addActions(menu, {QStringLiteral("blame"), QStringLiteral("fileHistory"), QString(), QStringLiteral("openFileAtRevision"),
                                    QStringLiteral("saveFileAtRevision")},
                             context);
  }
  menu->addSeparator();
  menu->addAction(QObject::tr("External Diff"), menu, [context, file] { ExternalDiffAtRevisionCommand::execute(context, file); });
  ContextMenus::addCustomCommands(menu, context, CustomCommand::Target::file);
  return menu;
}
