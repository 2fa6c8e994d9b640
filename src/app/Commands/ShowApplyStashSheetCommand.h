#pragma once
#include "Commands/CommandContext.h"

// Applies the chosen stash, deleting it afterwards when the user wants.
struct ShowApplyStashSheetCommand {
  static void execute(const CommandContext& context);
};
