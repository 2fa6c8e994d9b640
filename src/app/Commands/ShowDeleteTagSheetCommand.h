#pragma once
#include "Commands/CommandContext.h"

// Deletes the chosen tag, on a remote too when asked.
struct ShowDeleteTagSheetCommand {
  static void execute(const CommandContext& context);
};
