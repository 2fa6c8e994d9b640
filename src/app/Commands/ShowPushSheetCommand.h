#pragma once
#include "Commands/CommandContext.h"
#include "Git/Commands/Remotes/PushGitCommand.h"

// Push a local branch (the chosen one, else the checked-out one).
struct ShowPushSheetCommand {
  static void execute(const CommandContext& context);
  static void push(const CommandContext& context, const QString& jobName, const PushBranchOptions& options);
};

// Push the checked-out branch to its upstream at once; without one the sheet opens.
struct QuickPushCommand {
  static void execute(const CommandContext& context);
};
