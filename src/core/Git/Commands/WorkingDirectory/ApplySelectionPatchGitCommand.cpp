#include "Git/Commands/WorkingDirectory/ApplySelectionPatchGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Models/UnifiedDiffExporter.h"

QStringList ApplySelectionPatchGitCommand::arguments(SelectionMode mode) {
  // No --unidiff-zero and no --index: hunks carry context, and each mode touches one place.
  switch (mode) {
    case SelectionMode::stage:
      return {QStringLiteral("apply"), QStringLiteral("--cached"), QStringLiteral("--whitespace=nowarn"),
              QStringLiteral("--ignore-whitespace")};
    case SelectionMode::unstage:
      return {QStringLiteral("apply"), QStringLiteral("--cached"), QStringLiteral("--whitespace=nowarn"),
              QStringLiteral("--ignore-whitespace"), QStringLiteral("--reverse")};
    case SelectionMode::discard:
      return {QStringLiteral("apply"), QStringLiteral("--whitespace=nowarn"), QStringLiteral("--ignore-whitespace")};
  }
  return {};
}

GitVoidResult ApplySelectionPatchGitCommand::execute(const GitModule& module, const XPatch& patch, SelectionMode mode) {
  if (patch.files.empty()) return Error::NoChanges{};
  const auto text = UnifiedDiffExporter(patch.files.front()).data();
  if (!text) return Error::NoChanges{};
  const GitDataResponse response = GitRequest(module, arguments(mode)).executeData(*text);
  if (response.isSuccess()) return Unit{};
  const QString error = response.failure->error;
  if (error.startsWith(u"fatal: Unable to create") && error.contains(u"index.lock': File exists.")) {
    return Error::RepositoryIsLocked{error};
  }
  return failureResult<Unit>(response);
}
