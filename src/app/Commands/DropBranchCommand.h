#pragma once
#include "Commands/CommandContext.h"

// A branch dropped on the checked-out branch: asks, naming both, whether to merge the
// dropped one in or to rebase onto it, then runs that with the remembered options.
struct DropBranchCommand {
  static void execute(const CommandContext& context, const QString& sourceFullReference, const QString& targetFullReference);
};
