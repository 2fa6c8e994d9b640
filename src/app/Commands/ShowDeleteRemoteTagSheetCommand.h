#pragma once
#include "Commands/CommandContext.h"

// Deletes the chosen tag on a remote the user picks; the local tag stays.
struct ShowDeleteRemoteTagSheetCommand {
  static void execute(const CommandContext& context);
};
