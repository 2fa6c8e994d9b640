#include "Git/Commands/RepositoryStatus/GetPathsStatusGitCommand.h"

#include "Git/Process/GitRequest.h"

QStringList GetPathsStatusGitCommand::arguments(const QStringList& paths, bool hideUntracked, bool showIgnored) {
  // Paths are names, not patterns: "a[1].txt" must not match "a1.txt".
  QStringList args{QStringLiteral("--literal-pathspecs")};
  args << GetChangedFilesGitCommand::arguments(hideUntracked, showIgnored) << QStringLiteral("--") << paths;
  return args;
}

GitResult<ChangedFileList> GetPathsStatusGitCommand::execute(const GitModule& module, const QStringList& paths,
                                                            const SubmoduleList& submodules, bool hideUntracked, bool showIgnored) {
  if (paths.isEmpty()) return ChangedFileList{};
  const GitResponse response = GitRequest(module, arguments(paths, hideUntracked, showIgnored)).execute(false);
  if (!response.isSuccess()) return failureResult<ChangedFileList>(response);
  return GetChangedFilesGitCommand::parse(response.output, submodules).changedFiles;
}
