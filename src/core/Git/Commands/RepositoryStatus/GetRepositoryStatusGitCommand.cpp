#include "Git/Commands/RepositoryStatus/GetRepositoryStatusGitCommand.h"

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Jobs/JobProgress.h"

GitResult<RepositoryStatus> GetRepositoryStatusGitCommand::execute(const GitModule& module, const ReferenceList& references,
                                                                   const SubmoduleList& submodules, bool hideUntrackedFiles,
                                                                   bool showIgnoredFiles, JobProgress& progress) {
  auto state = GetRepositoryStateGitCommand::execute(module, references, &progress);
  if (!state) return state.mapError<RepositoryStatus>();
  if (progress.isCanceled()) return Error::Canceled{};
  auto files = GetChangedFilesGitCommand::execute(module, submodules, hideUntrackedFiles, showIgnoredFiles, &progress);
  if (!files) return files.mapError<RepositoryStatus>();
  RepositoryStatus status;
  status.repositoryState = std::move(state).value();
  status.changedFiles = files.value().changedFiles;
  status.changedFilesCount = files.value().filesCount;
  return status;
}
