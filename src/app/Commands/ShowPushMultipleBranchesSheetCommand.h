#pragma once
#include "Commands/CommandContext.h"

// Push several local branches to one remote: the branches chosen in the sidebar, else
// the checked-out one, are checked when the sheet opens.
struct ShowPushMultipleBranchesSheetCommand {
  static void execute(const CommandContext& context);
};
