#pragma once
#include "Commands/CommandContext.h"

// Deletes the chosen stash after the user agrees to lose its changes.
struct DropStashCommand {
  static void execute(const CommandContext& context);
};
