#pragma once
#include <QString>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

// The sha of HEAD. Fails in a repository without commits, which the refresh reads as
// "no HEAD"; the failure is therefore not logged.
struct GetHeadGitCommand {
  static GitResult<QString> execute(const GitModule& module);
};
