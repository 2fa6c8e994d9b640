#pragma once
#include "Commands/CommandContext.h"

// Deletes a local branch after asking, and asks again before forcing one not merged.
struct ShowRemoveLocalBranchSheetCommand {
  static void execute(const CommandContext& context);
};
