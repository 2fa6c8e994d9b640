#pragma once
// Continue, Abort and Skip of the merge, rebase, cherry-pick or revert under way, as the
// notification bar and the Repository menu offer them. Abort and Skip ask first.
#include <optional>

#include "Commands/CommandContext.h"
#include "Git/Commands/Merge/OperationControlGitCommand.h"

struct OperationControlCommand {
  // The operation the repository's state shows under way, if any.
  static std::optional<OperationControlGitCommand::Operation> operationUnderWay(const CommandContext& context);
  static bool canSkip(const CommandContext& context);
  static void execute(const CommandContext& context, OperationControlGitCommand::Action action);
};
