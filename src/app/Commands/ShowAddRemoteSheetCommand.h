#pragma once
#include "Commands/CommandContext.h"

// Adds a remote.
struct ShowAddRemoteSheetCommand {
  static void execute(const CommandContext& context);
};
