#pragma once
// The interactive rebase sheet for the checked-out branch. The plain entry rewrites the
// commits above the chosen one; the quick actions open it with their change already made
// to the chosen commit, so that one click on "Start Rebase" does it.
#include <optional>

#include "Commands/CommandContext.h"
#include "Controllers/Sheets/RebaseInteractiveController.h"

struct ShowRebaseInteractiveSheetCommand {
  static void execute(const CommandContext& context);
  static void reword(const CommandContext& context);
  static void edit(const CommandContext& context);
  static void squashIntoParent(const CommandContext& context);
  static void fixupIntoParent(const CommandContext& context);
  static void drop(const CommandContext& context);

  // Opens the sheet to rewrite what lies above `destination` (the root when none).
  static void open(const CommandContext& context, std::optional<QString> destination,
                   std::optional<RebaseInteractiveController::Action> action);
};
