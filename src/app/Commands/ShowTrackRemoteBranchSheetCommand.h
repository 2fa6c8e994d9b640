#pragma once
#include "Commands/CommandContext.h"

// Checks out a remote branch: a new tracking branch, or the local twin fast-forwarded.
struct ShowTrackRemoteBranchSheetCommand {
  static void execute(const CommandContext& context);
};
