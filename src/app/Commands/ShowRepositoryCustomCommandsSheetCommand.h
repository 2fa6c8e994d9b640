#pragma once
#include "Commands/CommandContext.h"

// Lists the repository's own custom commands to edit; saving reads them again.
struct ShowRepositoryCustomCommandsSheetCommand {
  static void execute(const CommandContext& context);
};
