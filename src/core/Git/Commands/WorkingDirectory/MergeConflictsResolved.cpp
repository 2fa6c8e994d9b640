#include "Git/Commands/WorkingDirectory/MergeConflictsResolved.h"

#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Logging/AdvancedLogger.h"
#include "Models/FileContent/TextDiffFileContent.h"

bool testMergeConflictsResolved(const GitModule& module, const ChangedFileList& files, const DiffSettings& settings) {
  for (const ChangedFilePtr& file : files) {
    if (file->changeType != ChangeType::unmerged) continue;
    const auto content = GetWorkingDirectoryFileChangesGitCommand::execute(module, file, false, settings);
    if (content.isFailure() || content.value()->kind() != DiffFileContent::Kind::text) continue;
    const QString& diff = static_cast<const TextDiffFileContent&>(*content.value()).diffString;
    // "* Unmerged path x": git has no diff to show for the file, so there is nothing to judge.
    if (!diff.startsWith(QStringLiteral("* Unmerged path")) && diff.contains(QStringLiteral("<<<<<"))) {
      LOG_ERROR(file->path + QStringLiteral(" contains unresolved conflicts and will not be staged"));
      return false;
    }
  }
  return true;
}
