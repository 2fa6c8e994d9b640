#pragma once
#include "Commands/CommandContext.h"

// Rebases the checked-out branch onto a chosen branch, tag or commit.
struct ShowRebaseSheetCommand {
  static void execute(const CommandContext& context);
};
