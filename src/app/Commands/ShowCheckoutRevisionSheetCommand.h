#pragma once
#include "Commands/CommandContext.h"

// Checks out a commit or tag, saying that no branch will be checked out.
struct ShowCheckoutRevisionSheetCommand {
  static void execute(const CommandContext& context);
};
