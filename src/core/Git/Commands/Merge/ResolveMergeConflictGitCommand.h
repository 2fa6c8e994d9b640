#pragma once
// Writes the merge editor's result into the working file (UTF-8, atomically: a failed
// write leaves the conflicted file as it was) and stages it, which marks it resolved.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct ResolveMergeConflictGitCommand {
  static QStringList arguments(const QString& path);
  static GitVoidResult execute(const GitModule& module, const QString& path, const QString& content);
};
