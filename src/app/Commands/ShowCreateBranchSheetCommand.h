#pragma once
#include "Commands/CommandContext.h"

// New branch at the chosen commit (or HEAD), checked out or not as last time.
struct ShowCreateBranchSheetCommand {
  static void execute(const CommandContext& context);
};
