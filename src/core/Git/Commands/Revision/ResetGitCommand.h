#pragma once
// Moves the checked-out branch to a commit: soft keeps index and files, mixed keeps the
// files, hard discards both.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct ResetGitCommand {
  enum class Mode { soft, mixed, hard };
  static QStringList arguments(const QString& sha, Mode mode);
  static GitVoidResult execute(const GitModule& module, const QString& sha, Mode mode, JobProgress* progress = nullptr);
};
