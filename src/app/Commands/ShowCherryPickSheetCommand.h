#pragma once
#include "Commands/CommandContext.h"

// Applies the chosen commits, oldest first, on the checked-out commit.
struct ShowCherryPickSheetCommand {
  static void execute(const CommandContext& context);
};
