#pragma once
// Brings up the quick launch over the context's window.
#include "Commands/CommandContext.h"

struct ShowQuickLaunchCommand {
  static void execute(const CommandContext& context);
};
