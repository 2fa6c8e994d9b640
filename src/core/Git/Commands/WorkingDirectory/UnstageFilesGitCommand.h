#pragma once
// Takes whole files out of the index again, leaving the working tree alone.
#include <vector>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

struct UnstageFilesGitCommand {
  // Only staged, non-directory entries count. Added files leave the index through
  // "update-index --force-remove" (they become untracked again; this works before the
  // first commit, where there is no HEAD to reset to); all others through
  // "reset HEAD". The first failing batch ends the run.
  static GitVoidResult execute(const GitModule& module, const std::vector<ChangedFilePtr>& files);
};
