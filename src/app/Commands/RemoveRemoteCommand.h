#pragma once
#include "Commands/CommandContext.h"

// Removes the chosen remote after the user agrees to lose its remote-tracking branches.
struct RemoveRemoteCommand {
  static void execute(const CommandContext& context);
};
