#pragma once
#include "Commands/CommandContext.h"

// Merges a chosen branch, tag or commit into the checked-out branch.
struct ShowMergeBranchSheetCommand {
  static void execute(const CommandContext& context);
};
