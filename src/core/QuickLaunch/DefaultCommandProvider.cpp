#include "QuickLaunch/DefaultCommandProvider.h"

DefaultCommandProvider::DefaultCommandProvider(std::vector<RepositoryRecordPtr> allRepositories, std::vector<QuickLaunchCommand> allCommands,
                                               std::vector<QuickLaunchCommand> allCustomCommands)
    : allRepositories_(std::move(allRepositories)), allCommands_(std::move(allCommands)), allCustomCommands_(std::move(allCustomCommands)) {
  std::erase(allRepositories_, nullptr);
}

void DefaultCommandProvider::refresh(const QString& text) {
  items_.clear();
  if (text.isEmpty()) {
    // Opened ones only, most recent first; the registry's order breaks ties.
    std::vector<RepositoryRecordPtr> recent;
    for (const RepositoryRecordPtr& repository : allRepositories_) {
      if (repository->lastOpened) recent.push_back(repository);
    }
    std::stable_sort(recent.begin(), recent.end(), [](const RepositoryRecordPtr& a, const RepositoryRecordPtr& b) { return *a->lastOpened > *b->lastOpened; });
    if (recent.size() > recentRepositoryCount) recent.resize(recentRepositoryCount);
    addSection(QStringLiteral("Recent Repositories"), recent);
  } else {
    addSection(QStringLiteral("Repositories"), ranked(allRepositories_, text));
  }
  addSection(QStringLiteral("Commands"), ranked(allCommands_, text));
  addSection(QStringLiteral("Custom Commands"), ranked(allCustomCommands_, text));
}
