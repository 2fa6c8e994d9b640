#pragma once
// Adds a pattern to the repository's ".gitignore" and shows beforehand what it catches.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct IgnorePatternGitCommand {
  // The files of the work tree and the index that the pattern would ignore.
  static GitResult<QStringList> preview(const GitModule& module, const QString& pattern);
  // One path a line, C-quoted where git quotes it.
  static QStringList parsePreview(const QString& output);
  // Appends the pattern as a line of its own, creating the file when there is none.
  static GitVoidResult append(const GitModule& module, const QString& pattern);
};
