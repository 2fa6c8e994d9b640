#include "Git/Commands/RepositoryStatus/GetRevisionChangedFilesGitCommand.h"

#include "Consts.h"
#include "Git/Commands/RepositoryStatus/ChangedFileLines.h"
#include "Git/Process/GitRequest.h"

QStringList GetRevisionChangedFilesGitCommand::arguments(const QString& from, const QString& sha) {
  return {QStringLiteral("--no-pager"), QStringLiteral("diff"),       QStringLiteral("--name-status"),
          QStringLiteral("--find-renames"), QStringLiteral("--submodule=short"), from, sha};
}

ChangedFileList GetRevisionChangedFilesGitCommand::parse(const QString& output, const QString& sha,
                                                         const SubmoduleList& submodules) {
  return ChangedFileLines::read(output, false, sha, submodules);
}

GitResult<ChangedFileList> GetRevisionChangedFilesGitCommand::executeInternal(const GitModule& module, const QString& sha,
                                                                              const std::optional<QString>& otherSha,
                                                                              const SubmoduleList& submodules) {
  if (otherSha) {
    const GitResponse response = GitRequest(module, arguments(*otherSha, sha)).execute();
    if (!response.isSuccess()) return failureResult<ChangedFileList>(response);
    return parse(response.output, sha, submodules);
  }
  // Asking for the parent directly saves a run in the common case; only a root
  // commit's missing parent sends us to the empty tree.
  const QStringList args = arguments(sha + QStringLiteral("^"), sha);
  GitResponse response = GitRequest(module, args).execute(true);
  if (ChangedFileLines::isUnknownRevision(response, args.at(args.size() - 2))) {
    response = GitRequest(module, arguments(Consts::Git::emptyTreeSha, sha)).execute();
  } else {
    ChangedFileLines::logFailure(args, response);
  }
  if (!response.isSuccess()) return failureResult<ChangedFileList>(response);
  return parse(response.output, sha, submodules);
}
