#pragma once
// The files a commit changed, or the difference between two commits.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"
#include "Models/Submodule.h"

class GetRevisionChangedFilesGitCommand {
 public:
  // Without otherSha: the commit against its first parent (the empty tree for a root).
  static GitResult<ChangedFileList> executeInternal(const GitModule& module, const QString& sha,
                                                    const std::optional<QString>& otherSha, const SubmoduleList& submodules);

  static QStringList arguments(const QString& from, const QString& sha);
  // One entry per --name-status line, each with treeIsh set to sha.
  static ChangedFileList parse(const QString& output, const QString& sha, const SubmoduleList& submodules);
};
