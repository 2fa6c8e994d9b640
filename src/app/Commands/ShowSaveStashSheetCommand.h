#pragma once
#include "Commands/CommandContext.h"

// Stashes every local change, new files too when the user keeps that choice.
struct ShowSaveStashSheetCommand {
  static void execute(const CommandContext& context);
};
