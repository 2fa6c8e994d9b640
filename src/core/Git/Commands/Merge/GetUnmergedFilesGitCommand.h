#pragma once
// The conflicted paths of the index: `git ls-files --unmerged -z`, one UnmergedFile per
// path with a version for each stage that is there.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/UnmergedFile.h"

class GetUnmergedFilesGitCommand {
 public:
  static GitResult<UnmergedFileList> execute(const GitModule& module);

  static QStringList arguments();
  // "<mode> <sha> <stage>\t<path>" entries; paths in the order they first appear.
  // A malformed entry is logged and dropped.
  static UnmergedFileList parseUnmergedFiles(const QString& output);
};
