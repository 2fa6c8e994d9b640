#pragma once
#include "Commands/CommandContext.h"

// Moves the checked-out branch to the chosen commit; the mode is preselected, and the
// hard one says what it discards.
struct ShowResetBranchSheetCommand {
  enum class Mode { soft, mixed, hard };
  static void execute(const CommandContext& context, Mode mode);
};
