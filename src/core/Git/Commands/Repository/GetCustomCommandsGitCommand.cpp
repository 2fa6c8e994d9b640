#include "Git/Commands/Repository/GetCustomCommandsGitCommand.h"

#include "Services/CustomCommandManager.h"

GitResult<CustomCommandList> GetCustomCommandsGitCommand::execute(const GitModule& module) {
  CustomCommandList commands = CustomCommandManager::load(CustomCommandManager::sharedURL(module), true);
  for (auto& command : CustomCommandManager::load(CustomCommandManager::localURL(module), false)) commands.push_back(std::move(command));
  return commands;
}
