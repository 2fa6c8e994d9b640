#pragma once
// One stage of a conflicted path written next to it as "<path>.~BASE", ".~LOCAL" or
// ".~REMOTE", for an outside merge tool to read.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/UnmergedFile.h"

struct CheckoutUnmergedFileGitCommand {
  static QStringList arguments(const QString& path, UnmergedFileVersionType version);
  // The suffix the version's file gets: ".~BASE", ".~LOCAL", ".~REMOTE".
  static QString suffix(UnmergedFileVersionType version);
  // The temporary name of "<temp>\t<path>"; nothing without a tab.
  static std::optional<QString> parseTemporaryName(const QString& output);
  // Gives the repository-relative path of the written file.
  static GitResult<QString> execute(const GitModule& module, const UnmergedFile& file, UnmergedFileVersionType version);
};
