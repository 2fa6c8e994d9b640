#pragma once
#include "Commands/CommandContext.h"

// Copies the chosen commits' shas or subjects (one a line), or a reference's name.
struct CopyToClipboardCommand {
  enum class What { sha, subject, referenceName };
  static void execute(const CommandContext& context, What what);
};
