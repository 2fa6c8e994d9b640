#pragma once
#include <QString>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

// Asks git where the Git directory of a path is, and builds the module that names the
// repository. Fails for a path that is no working tree (also a bare repository or the
// inside of a Git directory), since the system works on working trees.
struct GetGitDirectoryGitCommand {
  // "<git dir>\n<top level>\n[<superproject working tree>\n]"
  static GitResult<GitModule> parse(const QString& output);
  // The module's repositoryPath is the given path when it is the top level (links kept
  // as the user wrote them), the top level otherwise.
  static GitResult<GitModule> execute(const QString& path);
};
