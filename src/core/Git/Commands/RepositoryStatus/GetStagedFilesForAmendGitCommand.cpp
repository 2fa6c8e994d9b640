#include "Git/Commands/RepositoryStatus/GetStagedFilesForAmendGitCommand.h"

#include "Consts.h"
#include "Git/Commands/RepositoryStatus/ChangedFileLines.h"
#include "Git/Process/GitRequest.h"

QStringList GetStagedFilesForAmendGitCommand::arguments(const QString& previousRevision) {
  return {QStringLiteral("diff-index"), QStringLiteral("--cached"), previousRevision};
}

ChangedFileList GetStagedFilesForAmendGitCommand::parse(const QString& output, const SubmoduleList& submodules) {
  return ChangedFileLines::read(output, true, std::nullopt, submodules);
}

GitResult<ChangedFileList> GetStagedFilesForAmendGitCommand::executeInternal(const GitModule& module,
                                                                             const QString& previousRevision,
                                                                             const SubmoduleList& submodules) {
  const QStringList args = arguments(previousRevision);
  GitResponse response = GitRequest(module, args).execute(true);
  if (ChangedFileLines::isUnknownRevision(response, previousRevision)) {
    response = GitRequest(module, arguments(Consts::Git::emptyTreeSha)).execute();
  } else {
    ChangedFileLines::logFailure(args, response);
  }
  if (!response.isSuccess()) return failureResult<ChangedFileList>(response);
  return parse(response.output, submodules);
}
