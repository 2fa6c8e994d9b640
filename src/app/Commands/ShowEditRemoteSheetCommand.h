#pragma once
#include "Commands/CommandContext.h"

// Changes the chosen remote's name, URL and automatic fetch.
struct ShowEditRemoteSheetCommand {
  static void execute(const CommandContext& context);
};
