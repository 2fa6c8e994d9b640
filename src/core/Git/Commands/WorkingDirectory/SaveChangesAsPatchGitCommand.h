#pragma once
// "Save as Patch…" of the file lists: the changes of the chosen files, one after the
// other, as a patch that `git apply` takes. Bytes are kept as git prints them, so files
// in any encoding and binary changes survive the round trip.
#include <QByteArray>
#include <QString>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

struct SaveChangesAsPatchGitCommand {
  // Under amend, staged files are compared with the commit before the last one.
  static GitResult<QByteArray> patch(const GitModule& module, const ChangedFileList& files, bool amend = false);
  // Writes the patch to `path`, replacing the file.
  static GitVoidResult execute(const GitModule& module, const ChangedFileList& files, const QString& path, bool amend = false);
};
