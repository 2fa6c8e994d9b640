#pragma once
#include <QString>

#include "Git/Process/GitInstanceType.h"
#include "Git/ResultError.h"

struct GetGitVersionGitCommand {
  // "git version 2.39.1" -> "2.39.1"; any suffix after the number stays.
  static GitResult<QString> parse(const QString& output);
  static GitResult<QString> execute(const GitInstanceType& gitInstance);
};
