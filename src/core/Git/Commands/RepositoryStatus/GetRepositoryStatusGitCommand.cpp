#include "Git/Commands/RepositoryStatus/GetRepositoryStatusGitCommand.h"

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Jobs/JobProgress.h"

GitResult<RepositoryStatus> GetRepositoryStatusGitCommand::execute(const GitModule& module, const ReferenceList& references,
                                                                   const SubmoduleList& submodules, bool hideUntrackedFiles,
                                                                   bool showIgnoredFiles, JobProgress& progress,
                                                                   const std::optional<RepositoryState>& knownState) {
  RepositoryState repositoryState;
  if (knownState) {
    repositoryState = *knownState;
  } else {
    auto state = GetRepositoryStateGitCommand::execute(module, references, &progress);
    if (!state) return state.mapError<RepositoryStatus>();
    repositoryState = std::move(state).value();
  }
  if (progress.isCanceled()) return Error::Canceled{};
  auto files = GetChangedFilesGitCommand::execute(module, submodules, hideUntrackedFiles, showIgnoredFiles, &progress);
  if (!files) return files.mapError<RepositoryStatus>();
  RepositoryStatus status;
  status.repositoryState = std::move(repositoryState);
  status.changedFiles = files.value().changedFiles;
  status.changedFilesCount = files.value().filesCount;
  return status;
}
