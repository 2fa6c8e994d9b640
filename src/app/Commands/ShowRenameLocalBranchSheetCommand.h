#pragma once
#include "Commands/CommandContext.h"

// Renames a local branch, with its branch on the remote if asked.
struct ShowRenameLocalBranchSheetCommand {
  static void execute(const CommandContext& context);
};
