#pragma once
#include "Commands/CommandContext.h"
#include "Git/Commands/Repository/BisectGitCommand.h"

// The steps of a bisect. Good and bad mark the chosen commit when there is one, else the
// checked-out one; when git names the first bad commit the list shows it.
struct BisectCommand {
  static QString title(BisectGitCommand::Step step);  // "Bisect: Good"
  static void execute(const CommandContext& context, BisectGitCommand::Step step);
  static void start(const CommandContext& context) { execute(context, BisectGitCommand::Step::start); }
  static void reset(const CommandContext& context) { execute(context, BisectGitCommand::Step::reset); }
  static void good(const CommandContext& context) { execute(context, BisectGitCommand::Step::good); }
  static void bad(const CommandContext& context) { execute(context, BisectGitCommand::Step::bad); }
};
