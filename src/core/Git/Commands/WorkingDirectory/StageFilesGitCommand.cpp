#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"

#include "Extensions/PathBatches.h"
#include "Git/Process/GitRequest.h"

GitVoidResult StageFilesGitCommand::execute(const GitModule& module, const std::vector<ChangedFilePtr>& files) {
  QStringList paths;
  for (const ChangedFilePtr& file : files) {
    if (!file->isDirectory) paths << file->path;
  }
  for (const QStringList& batch : PathBatches::split(paths, PathBatches::stageLimit)) {
    const GitRequest request(module, QStringList{QStringLiteral("add"), QStringLiteral("-f"), QStringLiteral("--")} + batch);
    const GitResponse response = request.execute();
    if (!response.isSuccess()) return failureResult<Unit>(response);
  }
  return Unit{};
}
