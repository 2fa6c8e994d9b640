#pragma once
// Applies a selection patch (stage, unstage or discard of single lines) by handing the
// exported text of its first file to "git apply" on standard input.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/SelectionMode.h"
#include "Models/XPatch.h"

class ApplySelectionPatchGitCommand {
 public:
  static QStringList arguments(SelectionMode mode);

  // noChanges when there is nothing to apply or the text can't be encoded (callers end
  // quietly then); repositoryIsLocked when an index.lock stands in the way.
  static GitVoidResult execute(const GitModule& module, const XPatch& patch, SelectionMode mode);
};
