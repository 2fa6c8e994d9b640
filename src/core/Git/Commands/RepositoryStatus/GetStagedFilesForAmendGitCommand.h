#pragma once
// What an amend would commit: the index against the commit before the last one.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"
#include "Models/Submodule.h"

class GetStagedFilesForAmendGitCommand {
 public:
  // A last commit without a parent compares with the empty tree.
  static GitResult<ChangedFileList> executeInternal(const GitModule& module,
                                                    const QString& previousRevision = QStringLiteral("HEAD^"),
                                                    const SubmoduleList& submodules = {});

  static QStringList arguments(const QString& previousRevision);
  // Raw diff-index lines, entries on the staged side.
  static ChangedFileList parse(const QString& output, const SubmoduleList& submodules);
};
