#pragma once
// Reads an unmerged path's combined diff (the whole file, so every line is in it) and
// parses it into the editor's model. Runs git: off the main thread.
#include <QString>
#include <memory>

#include "Git/Merge/MergeConflict.h"
#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct LoadMergeConflict {
  // The combined diff of the path; "* Unmerged path" when git has no text to show.
  static GitResult<QString> combinedDiff(const GitModule& module, const QString& path);
  // Fails with "Only text files can be merged" for a binary or other non-text change.
  static GitResult<std::shared_ptr<MergeConflict>> execute(const GitModule& module, const QString& path);
};
