#pragma once
#include "Commands/CommandContext.h"

// An annotated tag at the chosen commit, or at HEAD.
struct ShowCreateTagSheetCommand {
  static void execute(const CommandContext& context);
};
