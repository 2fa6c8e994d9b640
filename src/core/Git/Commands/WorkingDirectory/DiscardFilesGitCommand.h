#pragma once
// Throws away the working tree's changes of whole files.
#include <QString>
#include <vector>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

struct DiscardFilesGitCommand {
  // Tracked files are restored from the index ("checkout-index", 1000 paths a run);
  // new files are deleted from disk without git. A file that can't be deleted is
  // reported and the others are still tried.
  static GitVoidResult execute(const GitModule& module, const std::vector<ChangedFilePtr>& files);
};
