#pragma once
// Commits saved as patch files (one file per commit, named by git) in a folder.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct FormatPatchGitCommand {
  // One commit when `oldest` is `newest`; otherwise `oldest` through `newest`. An oldest
  // commit without parents is taken from the root.
  static QStringList arguments(const QString& folder, const QString& oldest, const QString& newest, bool oldestIsRoot = false);
  // The files git wrote, one path a line.
  static QStringList parseFiles(const QString& output);

  static GitResult<QStringList> execute(const GitModule& module, const QString& folder, const QString& oldest, const QString& newest,
                                        bool oldestIsRoot = false, JobProgress* progress = nullptr);
};
