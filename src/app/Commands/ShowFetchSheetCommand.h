#pragma once
#include "Commands/CommandContext.h"
#include "Git/Commands/Remotes/FetchGitCommand.h"

// Fetch from one remote or all; the sheet remembers its options.
struct ShowFetchSheetCommand {
  static void execute(const CommandContext& context);
  // The job alone, as the sheet and the quick fetch start it. An empty remote with
  // `allRemotes` off fetches nothing.
  static void fetch(const CommandContext& context, const QString& remote, bool allRemotes, const FetchOptions& options);
};

// Fetch at once with the remembered options: "origin" or the first remote.
struct QuickFetchCommand {
  static void execute(const CommandContext& context);
};
