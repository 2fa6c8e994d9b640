#pragma once
// The quick launch's first list: the registry's repositories, the built-in commands and
// the custom commands. Without text it offers the repositories opened last.
#include <vector>

#include "QuickLaunch/CommandProvider.h"

class DefaultCommandProvider : public CommandProvider {
 public:
  static constexpr size_t recentRepositoryCount = 5;

  DefaultCommandProvider(std::vector<RepositoryRecordPtr> allRepositories, std::vector<QuickLaunchCommand> allCommands,
                         std::vector<QuickLaunchCommand> allCustomCommands);

  void refresh(const QString& text) override;

 private:
  std::vector<RepositoryRecordPtr> allRepositories_;
  std::vector<QuickLaunchCommand> allCommands_;
  std::vector<QuickLaunchCommand> allCustomCommands_;
};
