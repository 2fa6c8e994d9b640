// ENGINEERS OF THIS SESSION: before any change, read /work/brief-common.md (how to work, where to commit, the deadline, the rules). This line goes before the session ends.
#include "Commands/CommandTable.h"

#include <QAction>
#include <QMenu>

#include "Commands/CheckoutBranchCommand.h"
#include "Commands/ShowCreateBranchSheetCommand.h"

namespace {

using Needs = CommandContext::Needs;
using Type = CommandDescriptor::ArgumentType;
constexpr int menu = CommandDescriptor::repositoryMenu;
constexpr int toolbar = CommandDescriptor::toolbar;

std::vector<CommandDescriptor> makeTable() {
  std::vector<CommandDescriptor> table;
  const auto add = [&table](CommandDescriptor descriptor) { table.push_back(std::move(descriptor)); };

  // Branches and revisions.
  add({QStringLiteral("createBranch"), QStringLiteral("New Branch..."), {}, ShowCreateBranchSheetCommand::execute,
       Needs::repository, QKeySequence(QStringLiteral("Ctrl+Shift+B")), menu | toolbar, QStringLiteral("branch")});
  add({QStringLiteral("checkoutBranch"), QStringLiteral("Checkout..."), {{QStringLiteral("branch"), Type::localBranch}},
       CheckoutBranchCommand::execute, Needs::localBranch, {}, 0, QStringLiteral("branch")});

  return table;
}

}  // namespace

const std::vector<CommandDescriptor>& CommandTable::all() {
  static const std::vector<CommandDescriptor> table = makeTable();
  return table;
}

const CommandDescriptor* CommandTable::find(const QString& identifier) {
  for (const CommandDescriptor& descriptor : all()) {
    if (descriptor.identifier == identifier) return &descriptor;
  }
  return nullptr;
}

bool CommandTable::run(const QString& identifier, const CommandContext& context) {
  const CommandDescriptor* descriptor = find(identifier);
  if (!descriptor || !descriptor->isAvailable(context)) return false;
  descriptor->converter(context);
  return true;
}

QAction* CommandTable::action(const QString& identifier, const CommandContext& context, QObject* parent) {
  const CommandDescriptor* descriptor = find(identifier);
  if (!descriptor) return nullptr;
  auto* action = new QAction(descriptor->name, parent);
  action->setObjectName(identifier);
  action->setShortcut(descriptor->shortcut);
  action->setEnabled(descriptor->isAvailable(context));
  QObject::connect(action, &QAction::triggered, action, [identifier, context] { CommandTable::run(identifier, context); });
  return action;
}

void CommandTable::addActions(QMenu* menu, const QStringList& identifiers, const CommandContext& context) {
  for (const QString& identifier : identifiers) {
    if (identifier.isEmpty()) {
      menu->addSeparator();
    } else if (QAction* action = CommandTable::action(identifier, context, menu)) {
      menu->addAction(action);
    }
  }
}
