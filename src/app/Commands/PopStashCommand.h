#pragma once
#include "Commands/CommandContext.h"

// Applies the chosen stash and deletes it, without a sheet.
struct PopStashCommand {
  static void execute(const CommandContext& context);
};
