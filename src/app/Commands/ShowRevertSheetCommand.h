#pragma once
#include "Commands/CommandContext.h"

// Undoes the chosen commit with a new one, or leaves the undoing changes staged.
struct ShowRevertSheetCommand {
  static void execute(const CommandContext& context);
};
