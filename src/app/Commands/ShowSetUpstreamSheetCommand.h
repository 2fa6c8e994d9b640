#pragma once
#include "Commands/CommandContext.h"

// Chooses the remote branch a local branch tracks.
struct ShowSetUpstreamSheetCommand {
  static void execute(const CommandContext& context);
};
