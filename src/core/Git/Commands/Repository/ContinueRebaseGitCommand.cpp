#include "Git/Commands/Repository/ContinueRebaseGitCommand.h"

#include "Consts.h"
#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Commands/Repository/InteractiveRebaseGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"
#include "Services/RebaseMessageResponder.h"

QStringList ContinueRebaseGitCommand::arguments(const QString& editorPath) {
  const QString c = QStringLiteral("-c");
  const QString editor = InteractiveRebaseGitCommand::editorSetting(editorPath);
  // The same comment character as at the start: git reads the rest of the todo with it.
  return {c, QStringLiteral("core.commentChar=^"), c, QStringLiteral("sequence.editor=") + editor,
          c, QStringLiteral("core.editor=") + editor, QStringLiteral("rebase"), QStringLiteral("--continue")};
}

GitVoidResult ContinueRebaseGitCommand::execute(const GitModule& module, JobProgress* progress) {
  const auto unmerged = GetUnmergedFilesGitCommand::execute(module);
  if (!unmerged) return unmerged.error();
  if (!unmerged.value().empty()) {
    const auto count = unmerged.value().size();
    return Error::Generic{QStringLiteral("Resolve the conflicts in %1 before the rebase can go on.")
                              .arg(count == 1 ? QStringLiteral("1 file") : QStringLiteral("%1 files").arg(count))};
  }
  const RebaseMessageResponder responder(module);
  const GitRequest request(module, arguments(Consts::Git::rebaseEditorPath()));
  const GitResponse response = progress ? request.executeWithProgress(*progress) : request.execute();
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess() && !InteractiveRebaseGitCommand::isSuccessfulStop(response.failure->error + response.errorOutput)) {
    return failureResult<Unit>(response);
  }
  return Unit{};
}
