#pragma once
// `git rebase --continue` with the rebase editor: messages come from the message
// archive that the todo sheet left, so no text editor opens. A further conflict or edit
// stop ends the call without failure; the repository's state shows where it stands.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct ContinueRebaseGitCommand {
  static QStringList arguments(const QString& editorPath);
  // Refuses, with a message that says why, while files still hold conflicts.
  static GitVoidResult execute(const GitModule& module, JobProgress* progress = nullptr);
};
