#pragma once
// Moves whole files into the index.
#include <vector>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

struct StageFilesGitCommand {
  // Directory entries are left out. "-f" so that a file shown as ignored can be staged
  // too. The first failing batch ends the run; earlier batches stay staged.
  static GitVoidResult execute(const GitModule& module, const std::vector<ChangedFilePtr>& files);
};
