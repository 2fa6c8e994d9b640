#pragma once
#include "Commands/CommandContext.h"

// Stashes only the chosen files; the others keep their changes.
struct ShowCreatePartialStashSheetCommand {
  static void execute(const CommandContext& context);
};
