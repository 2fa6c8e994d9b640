#include "Models/StagingRefresh.h"

#include "Extensions/PathBatches.h"

StagingRefresh StagingRefresh::after(const ChangedFileList& files) {
  const auto count = files.size();
  if (count == 0 || count == 1 || count > static_cast<size_t>(PathBatches::stageLimit)) {
    return {Kind::workingTree, {}, Subdomain::repositoryStatus()};
  }
  StagingRefresh refresh{Kind::changedFiles, {}, Subdomain::none()};
  for (const ChangedFilePtr& file : files) {
    refresh.paths << file->path;
    if (file->oldPath) refresh.paths << *file->oldPath;
  }
  refresh.paths.removeDuplicates();
  return refresh;
}
