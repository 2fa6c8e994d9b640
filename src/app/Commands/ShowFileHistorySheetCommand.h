#pragma once
#include "Commands/CommandContext.h"

// The commits that changed the chosen file, followed across renames, in a window beside
// the repository.
struct ShowFileHistorySheetCommand {
  static void execute(const CommandContext& context);
};
