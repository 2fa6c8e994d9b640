#pragma once
#include "Commands/CommandContext.h"

// Pushes the chosen tag to a remote the user picks.
struct ShowPushTagSheetCommand {
  static void execute(const CommandContext& context);
};
