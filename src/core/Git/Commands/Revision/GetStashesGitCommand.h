#pragma once
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/StashRevision.h"

// The stash list, newest first, each entry with its first parent only.
struct GetStashesGitCommand {
  static QStringList arguments();
  static GitResult<StashRevisionList> execute(const GitModule& module);
};
