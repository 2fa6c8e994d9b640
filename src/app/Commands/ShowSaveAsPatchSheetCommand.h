#pragma once
#include "Commands/CommandContext.h"

// Saves the chosen commit, or the range of chosen commits, as patch files in a folder.
struct ShowSaveAsPatchSheetCommand {
  static void execute(const CommandContext& context);
};
