#pragma once
// Running a custom command from a menu or the palette: the trust question for a command
// that came with the repository, the command's dialog when it has one, then its action
// (a program as a job of the tab, or a URL for the desktop). A finished program refreshes
// the repository, shows its output when asked, and a failure in the error sheet.
#include "Commands/CommandContext.h"
#include "Models/CustomCommands/CustomCommand.h"
#include "Models/CustomCommands/CustomCommandEnvironment.h"

struct RunCustomCommandCommand {
  // Every custom command of the context's repository: the global ones, then its own.
  static CustomCommandList commands(const CommandContext& context);
  // Those of `target` that the context can run (a commit chosen for a commit command, a
  // file for a file command); a reference command only if it applies to the chosen kind.
  static CustomCommandList commands(const CommandContext& context, CustomCommand::Target target);
  // What the command runs on, taken from the context; null when the context lacks it.
  static CustomCommandEnvironmentPtr environment(const CommandContext& context, CustomCommand::Target target);

  // Runs `command` for the context's chosen object.
  static void execute(const CommandContext& context, const CustomCommandPtr& command);
  static void executeCustomCommand(const CommandContext& context, const CustomCommandPtr& command, const CustomCommandEnvironmentPtr& env);
  // One action: a program, a URL, or nothing for a cancel.
  static void executeAction(const CommandContext& context, const CustomCommandActionPtr& action, const CustomCommandEnvironmentPtr& env,
                            const QString& customCommandName);
};
