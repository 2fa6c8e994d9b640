#pragma once
#include "Commands/CommandContext.h"

// Stops a local branch from tracking its upstream.
struct UnsetUpstreamCommand {
  static void execute(const CommandContext& context);
};
