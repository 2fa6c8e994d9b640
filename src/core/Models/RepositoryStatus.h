#pragma once
// The status snapshot of a repository: its state and its changed files. Replaced whole.
#include "Models/ChangedFile.h"
#include "Models/RepositoryState.h"

#include <memory>

struct RepositoryStatus {
  RepositoryState repositoryState;
  ChangedFileList changedFiles;
  int changedFilesCount = 0;  // all entries, also where the list is cut

  bool operator==(const RepositoryStatus& other) const {
    if (!(repositoryState == other.repositoryState) || changedFilesCount != other.changedFilesCount ||
        changedFiles.size() != other.changedFiles.size()) {
      return false;
    }
    for (size_t i = 0; i < changedFiles.size(); ++i) {
      if (changedFiles[i] != other.changedFiles[i] && !(*changedFiles[i] == *other.changedFiles[i])) return false;
    }
    return true;
  }
};

using RepositoryStatusPtr = std::shared_ptr<const RepositoryStatus>;
