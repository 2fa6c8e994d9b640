#pragma once
#include "Commands/CommandContext.h"

// Deletes the chosen remote branch on its remote after the user agrees.
struct ShowDeleteRemoteBranchSheetCommand {
  static void execute(const CommandContext& context);
};
