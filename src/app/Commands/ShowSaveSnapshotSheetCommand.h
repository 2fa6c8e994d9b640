#pragma once
#include "Commands/CommandContext.h"

// Puts the local changes on the stash list and leaves them in the working tree.
struct ShowSaveSnapshotSheetCommand {
  static void execute(const CommandContext& context);
};
