#pragma once
// Which commands of the table each context menu offers, in order ("" is a separator), and
// the context a sidebar entry stands for. Identifiers not (yet) in the table are skipped.
#include <QStringList>

#include "Commands/CommandContext.h"

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
};
