#pragma once
// The repository's own custom commands: the shared file of the work tree first, then
// the local file of the Git directory. Reads files only; no child process.
#include "Git/ResultError.h"
#include "Models/CustomCommands/CustomCommand.h"
#include "Models/GitModule.h"

struct GetCustomCommandsGitCommand {
  static GitResult<CustomCommandList> execute(const GitModule& module);
};
