#include "Models/CustomCommands/CustomCommandAction.h"

bool ProcessCustomCommandAction::equals(const CustomCommandAction& other) const {
  auto o = dynamic_cast<const ProcessCustomCommandAction*>(&other);
  return o && o->path == path && o->parameters == parameters && o->showOutput == showOutput && o->waitForExit == waitForExit;
}

bool UrlCustomCommandAction::equals(const CustomCommandAction& other) const {
  auto o = dynamic_cast<const UrlCustomCommandAction*>(&other);
  return o && o->url == url;
}

bool sameAction(const CustomCommandActionPtr& a, const CustomCommandActionPtr& b) {
  if (!a || !b) return !a && !b;
  return a->equals(*b);
}
