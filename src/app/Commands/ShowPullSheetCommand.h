#pragma once
#include "Commands/CommandContext.h"
#include "Git/Commands/Remotes/PullGitCommand.h"

// Pull into the checked-out branch, by merge or rebase, as the sheet remembers.
struct ShowPullSheetCommand {
  static void execute(const CommandContext& context);
  static void pull(const CommandContext& context, const PullOptions& options);
};

// Pull at once from the branch's upstream with the remembered options.
struct QuickPullCommand {
  static void execute(const CommandContext& context);
};
