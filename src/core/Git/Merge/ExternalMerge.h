#pragma once
// A conflicted file merged by the outside tool chosen in the preferences: the versions
// are written next to the file, the tool writes the working file and is waited for, and
// the versions are removed whatever happened. Runs git and waits: off the main thread.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/UnmergedFile.h"
#include "Services/MergeTool.h"

struct ExternalMerge {
  // Runs the tool to its end; its exit status is its own business (tools exit non-zero
  // when the user closes them without saving), a failed start is a failure.
  static GitVoidResult runTool(const MergeTool::Launch& launch, const QStringList& arguments, const QString& workingDirectory);
  // Logs and deletes each file (repository-relative); a failure is logged and skipped.
  static void removeTemporaryFiles(const GitModule& module, const QStringList& files);
  static GitVoidResult merge(const GitModule& module, const UnmergedFile& file, const MergeTool::Launch& launch);
};
