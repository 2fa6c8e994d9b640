#pragma once
#include "Commands/CommandContext.h"

// The first chosen conflicted path: its sides and the ways to resolve it, from which the
// merge editor opens.
struct ShowResolveConflictsSheetCommand {
  static void execute(const CommandContext& context);
  // The three-pane editor on one path, without the choice first.
  static void showEditor(const CommandContext& context, const QString& path);
};
