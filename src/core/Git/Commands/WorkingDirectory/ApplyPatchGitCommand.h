#pragma once
// A patch file applied to the working tree; nothing is committed.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct ApplyPatchGitCommand {
  static QStringList arguments(const QString& patchFile);
  static GitVoidResult execute(const GitModule& module, const QString& patchFile, JobProgress* progress = nullptr);
};
