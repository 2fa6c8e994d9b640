#pragma once
// The status of a few paths only: the same read as GetChangedFilesGitCommand, limited by
// a literal pathspec, for the refresh after a stage, unstage or discard.
#include <QStringList>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"

class GetPathsStatusGitCommand {
 public:
  static QStringList arguments(const QStringList& paths, bool hideUntracked, bool showIgnored);
  static GitResult<ChangedFileList> execute(const GitModule& module, const QStringList& paths, const SubmoduleList& submodules,
                                            bool hideUntracked, bool showIgnored);
};
