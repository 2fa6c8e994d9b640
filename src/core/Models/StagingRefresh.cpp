#include "Models/StagingRefresh.h"

#include <QSet>

#include "Extensions/PathBatches.h"
#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"

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

ChangedFileList StagingRefresh::merged(const ChangedFileList& current, const QStringList& paths, const ChangedFileList& fresh) {
  QSet<QString> read(paths.begin(), paths.end());
  // A move seen in the fresh read also replaces the entries of its other path.
  for (const ChangedFilePtr& file : fresh) {
    read.insert(file->path);
    if (file->oldPath) read.insert(*file->oldPath);
  }
  ChangedFileList result;
  result.reserve(current.size() + fresh.size());
  for (const ChangedFilePtr& file : current) {
    const bool replaced = read.contains(file->path) || (file->oldPath && read.contains(*file->oldPath));
    if (!replaced) result.push_back(file);
  }
  result.insert(result.end(), fresh.begin(), fresh.end());
  GetChangedFilesGitCommand::sort(result);
  return result;
}

QStringList StagingRefresh::pathsToRead(const ChangedFileList& current, const QStringList& paths) {
  QStringList result = paths;
  for (const ChangedFilePtr& file : current) {
    if (!file->oldPath) continue;
    if (paths.contains(file->path) || paths.contains(*file->oldPath)) result << file->path << *file->oldPath;
  }
  result.removeDuplicates();
  return result;
}
