#pragma once
// The tracked files of a repository, as git lists them (not the file system: ignored
// and untracked files are no arguments for blame or history).
#include <vector>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "QuickLaunch/CommandProvider.h"

class RepositoryFileCommandProvider : public CommandProvider {
 public:
  RepositoryFileCommandProvider(std::vector<RepositoryFile> allFiles, GitModule gitModule);
  // Reads the file list with git; blocks, so off the main thread.
  static GitResult<std::vector<RepositoryFile>> load(const GitModule& gitModule);

  const GitModule& gitModule() const { return gitModule_; }
  void refresh(const QString& text) override;

 private:
  std::vector<RepositoryFile> allFiles_;
  GitModule gitModule_;
};
