#pragma once
// One user action as menus, the toolbar and the palette see it: its name, what it needs
// from the tab before it can run, and the converter that runs it with what was chosen.
#include <QKeySequence>
#include <QString>
#include <functional>
#include <vector>

#include "Commands/CommandContext.h"

struct CommandDescriptor {
  enum class ArgumentType { defaultType, repositoryFile, reference, tag, branch, localBranch, remoteBranch, gitflowFeature, gitflowHotfix, gitflowRelease };
  struct Argument {
    QString name;
    ArgumentType type = ArgumentType::defaultType;
  };
  // Where the entry is listed besides context menus, which pick entries by identifier.
  enum Place { nowhere = 0, repositoryMenu = 1, toolbar = 2 };

  QString identifier;  // "createBranch": the action's object name
  QString name;        // "New Branch...": ends with "..." when it opens a sheet
  std::vector<Argument> arguments;
  std::function<void(const CommandContext&)> converter;
  CommandContext::Needs needs = CommandContext::Needs::repository;
  QKeySequence shortcut;
  int places = nowhere;
  QString section;  // the Repository menu's group; a separator stands between groups
  // A further condition beyond `needs` (a state under way, a branch not checked out).
  std::function<bool(const CommandContext&)> enabled = {};  // "= {}": rows may leave it out without a warning

  bool isAvailable(const CommandContext& context) const { return context.satisfies(needs) && (!enabled || enabled(context)); }
};
