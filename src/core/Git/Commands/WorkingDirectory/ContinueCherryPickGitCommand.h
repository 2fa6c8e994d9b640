#pragma once
// Goes on with the picks the sequencer still holds, once the stopped one is committed.
// Each further pick keeps its own message: no editor is started.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct ContinueCherryPickGitCommand {
  static QStringList arguments();
  // A further conflict stops git again and fails the run; the state then says so.
  static GitVoidResult execute(const GitModule& module, JobProgress* progress = nullptr);
};
