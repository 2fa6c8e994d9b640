#include "Git/Commands/WorkingDirectory/UnstageFilesGitCommand.h"

#include "Extensions/PathBatches.h"
#include "Git/Process/GitRequest.h"

namespace {
GitVoidResult runBatches(const GitModule& module, const QStringList& command, const QStringList& paths) {
  for (const QStringList& batch : PathBatches::split(paths, PathBatches::stageLimit)) {
    const GitResponse response = GitRequest(module, command + batch).execute();
    if (!response.isSuccess()) return failureResult<Unit>(response);
  }
  return Unit{};
}
}  // namespace

GitVoidResult UnstageFilesGitCommand::execute(const GitModule& module, const std::vector<ChangedFilePtr>& files) {
  QStringList added;
  QStringList others;
  for (const ChangedFilePtr& file : files) {
    if (!file->staged || file->isDirectory) continue;
    if (file->changeType == ChangeType::added) {
      added << file->path;
    } else {
      others << file->path;
      // A staged rename is a deletion plus an addition in the index; both sides go back.
      if (file->changeType == ChangeType::renamed && file->oldPath) others << *file->oldPath;
    }
  }
  const GitVoidResult removed = runBatches(
      module, {QStringLiteral("update-index"), QStringLiteral("--force-remove"), QStringLiteral("--")}, added);
  if (removed.isFailure()) return removed;
  return runBatches(module, {QStringLiteral("reset"), QStringLiteral("HEAD"), QStringLiteral("--")}, others);
}
