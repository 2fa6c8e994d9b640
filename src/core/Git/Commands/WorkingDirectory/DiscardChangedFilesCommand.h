#pragma once
// The user's "Discard Changes…": submodules are reset in their own repositories, plain
// files go through DiscardFilesGitCommand. The alert's texts come from here; the view
// shows them and calls execute() on "Discard".
#include <QString>
#include <vector>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"
#include "Models/Submodule.h"

struct DiscardChangedFilesCommand {
  struct Plan {
    ChangedFileList files;
    SubmoduleList submodules;
  };
  struct Confirmation {
    QString messageText;
    QString informativeText;
    QString discardButton;
    QString cancelButton = QStringLiteral("Cancel");
    bool operator==(const Confirmation&) const = default;
  };

  static Plan plan(const ChangedFileList& selection);
  // With a submodule in the selection the alert speaks of submodules only.
  static Confirmation confirmation(const Plan& plan);
  // Submodules first; the first failure ends the run.
  static GitVoidResult execute(const GitModule& module, const Plan& plan);
};
