#include "QuickLaunch/RepositoryFileCommandProvider.h"

#include "Git/Commands/WorkingDirectory/GetRepositoryFilesGitCommand.h"

RepositoryFileCommandProvider::RepositoryFileCommandProvider(std::vector<RepositoryFile> allFiles, GitModule gitModule)
    : allFiles_(std::move(allFiles)), gitModule_(std::move(gitModule)) {}

GitResult<std::vector<RepositoryFile>> RepositoryFileCommandProvider::load(const GitModule& gitModule) {
  auto paths = GetRepositoryFilesGitCommand::execute(gitModule);
  if (!paths) return paths.error();
  std::vector<RepositoryFile> files;
  files.reserve(static_cast<size_t>(paths.value().size()));
  for (const QString& path : paths.value()) files.push_back({path});
  return files;
}

void RepositoryFileCommandProvider::refresh(const QString& text) {
  items_.clear();
  addSection(QStringLiteral("Repository Files"), ranked(allFiles_, text));
}
