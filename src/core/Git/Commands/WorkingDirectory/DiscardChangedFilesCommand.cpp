#include "Git/Commands/WorkingDirectory/DiscardChangedFilesCommand.h"

#include "Git/Commands/Submodules/DiscardSubmoduleChangesGitCommand.h"
#include "Git/Commands/WorkingDirectory/DiscardFilesGitCommand.h"

DiscardChangedFilesCommand::Plan DiscardChangedFilesCommand::plan(const ChangedFileList& selection) {
  Plan plan;
  for (const ChangedFilePtr& file : selection) {
    if (const Submodule* submodule = file->changedSubmodule()) {
      plan.submodules.push_back(*submodule);
    } else {
      plan.files.push_back(file);
    }
  }
  return plan;
}

DiscardChangedFilesCommand::Confirmation DiscardChangedFilesCommand::confirmation(const Plan& plan) {
  Confirmation confirmation;
  const auto submoduleCount = plan.submodules.size();
  if (submoduleCount > 0) {
    confirmation.messageText =
        submoduleCount == 1
            ? QStringLiteral("Do you want to discard all changes in submodule '%1'?").arg(plan.submodules.front().name)
            : QStringLiteral("Do you want to discard all changes in %1 submodules?").arg(submoduleCount);
    confirmation.informativeText = QStringLiteral("All uncommitted changes will be lost");
    confirmation.discardButton = submoduleCount == 1 ? QStringLiteral("Discard") : QStringLiteral("Discard All");
    return confirmation;
  }
  confirmation.messageText = QStringLiteral("Do you want to discard all your changes in the selected files?");
  confirmation.informativeText = QStringLiteral("All uncommitted changes will be lost.");
  confirmation.discardButton = plan.files.size() == 1 ? QStringLiteral("Discard")
                                                      : QStringLiteral("Discard Changes in %1 Files").arg(plan.files.size());
  return confirmation;
}

GitVoidResult DiscardChangedFilesCommand::execute(const GitModule& module, const Plan& plan) {
  for (const Submodule& submodule : plan.submodules) {
    const GitVoidResult result = DiscardSubmoduleChangesGitCommand::execute(module, submodule.path);
    if (result.isFailure()) return result;
  }
  if (plan.files.empty()) return Unit{};
  return DiscardFilesGitCommand::execute(module, plan.files);
}
