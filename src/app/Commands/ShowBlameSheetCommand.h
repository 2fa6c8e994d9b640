#pragma once
#include "Commands/CommandContext.h"

// Blame of the chosen file at the chosen commit (the checked-out one without a commit)
// in a window beside the repository; its clicks select commits in the history.
struct ShowBlameSheetCommand {
  static void execute(const CommandContext& context);
  // The blame of `path` at `sha` (a commit or a revision expression).
  static void open(const CommandContext& context, const QString& sha, const QString& path);
};
