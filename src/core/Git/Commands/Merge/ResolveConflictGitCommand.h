#pragma once
// Settles a conflicted path by taking one side whole: that side's version from the index
// goes to the work tree and is staged, or, when that side deleted the file, the path is
// removed.
#include <QStringList>
#include <vector>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/UnmergedFile.h"

struct ResolveConflictGitCommand {
  // The commands in the order they run.
  static std::vector<QStringList> argumentLists(const UnmergedFile& file, UnmergedFileVersionType version);
  static GitVoidResult execute(const GitModule& module, const UnmergedFile& file, UnmergedFileVersionType version);
};
