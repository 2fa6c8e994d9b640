#pragma once
#include "Commands/CommandContext.h"

// Applies a patch file the user picks to the working tree.
struct ApplyPatchCommand {
  static void execute(const CommandContext& context);
};
