#pragma once
#include "Commands/CommandContext.h"

// Checks out the chosen local branch; a remote branch goes through its tracking sheet.
struct CheckoutBranchCommand {
  static void execute(const CommandContext& context);
};
