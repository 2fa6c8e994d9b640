#pragma once
// The one list of user actions. Menus, context menus, the toolbar and the palette read
// it; nothing else decides what an action is called or what it needs.
#include <QList>
#include <QStringList>
#include <vector>

#include "Commands/CommandDescriptor.h"

class QAction;
class QMenu;
class QObject;

class CommandTable {
 public:
  static const std::vector<CommandDescriptor>& all();
  static const CommandDescriptor* find(const QString& identifier);

  // The entry's name where no menu says what it acts on: "Delete Branch..." for the
  // branch menu's "Delete...".
  static QString paletteName(const CommandDescriptor& descriptor);

  // Runs the entry with `context` if it is available there; false when it is not.
  static bool run(const QString& identifier, const CommandContext& context);

  // An action titled as the entry, enabled as the context allows, that runs it with
  // `context`. Owned by `parent`. Null for an unknown identifier.
  static QAction* action(const QString& identifier, const CommandContext& context, QObject* parent);
  // Adds the entries to `menu` in order; an empty identifier adds a separator, ">Title"
  // opens a submenu and "<" closes it. Entries the context cannot satisfy are disabled.
  static void addActions(QMenu* menu, const QStringList& identifiers, const CommandContext& context);
};
