#pragma once
// Which commands of the table each context menu offers, in order ("" is a separator), and
// the context a sidebar entry stands for. Identifiers not (yet) in the table are skipped.
#include <QStringList>

#include "Commands/CommandContext.h"
#include "Models/CustomCommands/CustomCommand.h"

class QMenu;
class QTreeWidgetItem;

struct ContextMenus {
  static QStringList revision();      // the commit list
  static QStringList localBranch();
  static QStringList remoteBranch();
  static QStringList tag();
  static QStringList stash();
  static QStringList remote();        // a remote's group in the sidebar
  static QStringList section(const QString& title);  // "Branches", "Remotes", ...
  // The sidebar's commands for the entry, and the context they run with.
  static QStringList forSidebarItem(const QTreeWidgetItem* item);
  static CommandContext contextForSidebarItem(JelvDocument* repository, const QTreeWidgetItem* item);
  // The user's custom commands of `target` that the context can run, after a separator;
  // nothing when there are none. Each entry is named "customCommand".
  static void addCustomCommands(QMenu* menu, const CommandContext& context, CustomCommand::Target target);
  // A sidebar entry's custom commands: those of its branch or tag.
  static void addCustomCommands(QMenu* menu, const CommandContext& context);
};
