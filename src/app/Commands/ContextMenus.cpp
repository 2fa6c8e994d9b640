#include "Commands/ContextMenus.h"

#include <QMenu>
#include <QTreeWidgetItem>

#include "Commands/RunCustomCommandCommand.h"

#include "UI/JelvDocument.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Models/RemoteBranch.h"
#include "Repository/RepositoryController.h"

QStringList ContextMenus::revision() {
  return {QStringLiteral("copySha"), QStringLiteral("copySubject"), {},
          QStringLiteral("checkoutRevision"), QStringLiteral("createBranch"), QStringLiteral("createTagHere"), {},
          QStringLiteral("mergeIntoCurrent"), QStringLiteral("rebaseCurrentOnto"), QStringLiteral("rebaseInteractive"), {},
          QStringLiteral("cherryPick"), QStringLiteral("revert"), QStringLiteral(">Reset Current Branch to Here"),
          QStringLiteral("resetSoft"), QStringLiteral("resetMixed"), QStringLiteral("resetHard"), QStringLiteral("<"), {},
          QStringLiteral("rewordRevision"), QStringLiteral("editRevision"), QStringLiteral("squashIntoParent"),
          QStringLiteral("fixupIntoParent"), QStringLiteral("dropRevision"), {},
          QStringLiteral("browseFiles"), QStringLiteral("saveAsPatch"), QStringLiteral(">Bisect"), QStringLiteral("bisectStart"),
          QStringLiteral("bisectGood"), QStringLiteral("bisectBad"), QStringLiteral("bisectReset"), QStringLiteral("<")};
}

QStringList ContextMenus::localBranch() {
  return {QStringLiteral("checkoutBranch"), QStringLiteral("mergeIntoCurrent"), QStringLiteral("rebaseCurrentOnto"), {},
          QStringLiteral("createBranch"), QStringLiteral("renameBranch"), QStringLiteral("deleteBranch"), {},
          QStringLiteral("push"), QStringLiteral("pushBranches"), QStringLiteral("pull"), QStringLiteral("setUpstream"),
          QStringLiteral("unsetUpstream"), {},
          QStringLiteral("createTag"), QStringLiteral("copyBranchName")};
}

QStringList ContextMenus::remoteBranch() {
  return {QStringLiteral("checkoutRemoteBranch"), QStringLiteral("mergeIntoCurrent"), QStringLiteral("rebaseCurrentOnto"), {},
          QStringLiteral("createBranch"), QStringLiteral("deleteRemoteBranch"), QStringLiteral("copyBranchName")};
}

QStringList ContextMenus::tag() {
  return {QStringLiteral("checkoutRevision"), QStringLiteral("mergeIntoCurrent"), {}, QStringLiteral("createBranch"),
          QStringLiteral("pushTag"), QStringLiteral("deleteTag"), QStringLiteral("deleteRemoteTag"), QStringLiteral("copyBranchName")};
}

QStringList ContextMenus::stash() {
  return {QStringLiteral("applyStash"), QStringLiteral("popStash"), QStringLiteral("dropStash")};
}

QStringList ContextMenus::remote() {
  return {QStringLiteral("fetch"), {}, QStringLiteral("editRemote"), QStringLiteral("renameRemote"), QStringLiteral("removeRemote")};
}

QStringList ContextMenus::section(const QString& title) {
  if (title == QStringLiteral("Branches")) return {QStringLiteral("createBranch")};
  if (title == QStringLiteral("Remotes")) return {QStringLiteral("addRemote")};
  if (title == QStringLiteral("Tags")) return {QStringLiteral("createTag")};
  if (title == QStringLiteral("Stashes")) return {QStringLiteral("saveStash"), QStringLiteral("saveSnapshot")};
  return {};
}

QStringList ContextMenus::forSidebarItem(const QTreeWidgetItem* item) {
  if (!item) return {};
  const auto entry = static_cast<RepositorySidebar::Entry>(item->data(0, RepositorySidebar::EntryRole).toInt());
  const QString full = item->data(0, RepositorySidebar::FullReferenceRole).toString();
  switch (entry) {
    case RepositorySidebar::Entry::reference:
      if (full.startsWith(QStringLiteral("refs/heads/"))) return localBranch();
      if (full.startsWith(QStringLiteral("refs/remotes/"))) return remoteBranch();
      if (full.startsWith(QStringLiteral("refs/tags/"))) return tag();
      return {};
    case RepositorySidebar::Entry::stash: return stash();
    case RepositorySidebar::Entry::section:
      if (full.startsWith(QStringLiteral("remote:"))) return remote();
      return section(full);
    default: return {};
  }
}

CommandContext ContextMenus::contextForSidebarItem(JelvDocument* repository, const QTreeWidgetItem* item) {
  CommandContext context;
  context.repository = repository;
  context.window = repository ? repository->window() : nullptr;
  const RepositoryDataPtr data = repository ? repository->controller()->repositoryData() : nullptr;
  if (!item || !data) return context;
  const QString full = item->data(0, RepositorySidebar::FullReferenceRole).toString();
  const auto entry = static_cast<RepositorySidebar::Entry>(item->data(0, RepositorySidebar::EntryRole).toInt());
  if (entry == RepositorySidebar::Entry::reference) {
    context.reference = data->references.reference(full);
    // A right click on a selected entry acts on the whole selection.
    if (const auto* sidebar = qobject_cast<const RepositorySidebar*>(item->treeWidget()); sidebar && item->isSelected()) {
      for (const QString& selected : sidebar->selectedReferences()) {
        if (ReferencePtr reference = data->references.reference(selected)) context.references.push_back(reference);
      }
    }
    if (const auto* remoteBranch = dynamic_cast<const RemoteBranch*>(context.reference.get())) context.remote = remoteBranch->remote;
  } else if (entry == RepositorySidebar::Entry::stash) {
    for (const auto& stash : data->stashes) {
      if (stash->reflogName() == full) context.stash = stash;
    }
  } else if (full.startsWith(QStringLiteral("remote:"))) {
    context.remote = full.mid(int(qstrlen("remote:")));
  }
  return context;
}

void ContextMenus::addCustomCommands(QMenu* menu, const CommandContext& context, CustomCommand::Target target) {
  const CustomCommandList commands = RunCustomCommandCommand::commands(context, target);
  if (commands.empty()) return;
  if (!menu->isEmpty()) menu->addSeparator();
  for (const CustomCommandPtr& command : commands) {
    QAction* action = menu->addAction(command->name);
    action->setObjectName(QStringLiteral("customCommand"));
    QObject::connect(action, &QAction::triggered, action, [context, command] { RunCustomCommandCommand::execute(context, command); });
  }
}

void ContextMenus::addCustomCommands(QMenu* menu, const CommandContext& context) {
  if (context.reference) addCustomCommands(menu, context, CustomCommand::Target::reference);
}
