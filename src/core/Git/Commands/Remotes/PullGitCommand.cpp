#include "Git/Commands/Remotes/PullGitCommand.h"

#include <QDateTime>
#include <QFileInfo>

#include "Git/Commands/Remotes/RemoteOperation.h"
#include "Git/Commands/RunGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"

QStringList PullGitCommand::arguments(const QString& remote, const QString& branch, bool rebase, bool autostash) {
  QStringList args{QStringLiteral("pull")};
  if (rebase) {
    args << QStringLiteral("--rebase");
    if (autostash) args << QStringLiteral("--autostash");
  }
  args << remote << branch << QStringLiteral("--verbose") << QStringLiteral("--progress");
  return args;
}

QStringList PullGitCommand::stashArguments(const QString& message) {
  return {QStringLiteral("stash"), QStringLiteral("push"), QStringLiteral("-m"), message};
}

QStringList PullGitCommand::restoreStashArguments() {
  return {QStringLiteral("stash"), QStringLiteral("pop"), QStringLiteral("stash@{0}")};
}

QStringList PullGitCommand::updateSubmodulesArguments() {
  return {QStringLiteral("submodule"), QStringLiteral("update"), QStringLiteral("--init"), QStringLiteral("--recursive")};
}

QString PullGitCommand::stashMessage(const QDateTime& now) {
  return QStringLiteral("Jelv autostash ") + now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

GitVoidResult PullGitCommand::execute(const GitModule& module, const QString& remote, const QString& branch, bool rebase,
                                      bool autostash, JobProgress& progress) {
  RemoteOperation operation;
  operation.kind = RemoteOperation::Kind::pull;
  operation.remote = remote;
  return operation.run(module, arguments(remote, branch, rebase, autostash), progress);
}

bool PullGitCommand::hasLocalChanges(const GitModule& module) {
  const GitResponse response =
      GitRequest(module, {QStringLiteral("status"), QStringLiteral("--porcelain"), QStringLiteral("--untracked-files=no")}).execute(true);
  return response.isSuccess() && !response.output.trimmed().isEmpty();
}

bool PullGitCommand::hasSubmodules(const GitModule& module) {
  return QFileInfo::exists(module.repositoryPath + QStringLiteral("/.gitmodules"));
}

GitVoidResult PullGitCommand::updateSubmodules(const GitModule& module, JobProgress& progress) {
  progress.logGitCommand(updateSubmodulesArguments());
  const GitResponse response = GitRequest(module, updateSubmodulesArguments())
                                   .executeWithHandlers([&](const QString& line) { if (!line.isEmpty()) progress.appendOutput(line); },
                                                        [&](const QString& chunk) {
                                                          if (!progress.isCanceled() && !progress.parseGitProgress(chunk) && !chunk.isEmpty())
                                                            progress.appendOutput(chunk);
                                                        },
                                                        &progress);
  if (progress.isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<Unit>(response);
  return Unit{};
}

GitVoidResult PullGitCommand::run(const GitModule& module, const PullOptions& options, JobProgress& progress) {
  bool stashed = false;
  if (options.stashAndReapply && !options.rebase && hasLocalChanges(module)) {
    progress.update(0, QStringLiteral("Stashing..."), JobProgressState::inProgress);
    const GitVoidResult stash = runGitCommand(module, stashArguments(stashMessage(QDateTime::currentDateTime())), &progress);
    if (!stash) return stash;
    stashed = true;
  }
  const GitVoidResult pull = execute(module, options.remote, options.branch, options.rebase,
                                     options.rebase && options.stashAndReapply, progress);
  // A failed or canceled pull keeps the stash: the changes stay safe in the list.
  if (!pull) return pull;
  if (stashed) {
    progress.update(100, QStringLiteral("Applying stash..."), JobProgressState::inProgress);
    const GitVoidResult restore = runGitCommand(module, restoreStashArguments(), &progress);
    if (!restore) {
      progress.setState(JobProgressState::failed);
      return restore;
    }
  }
  if (options.updateSubmodules && hasSubmodules(module)) {
    progress.update(100, QStringLiteral("Updating submodules..."), JobProgressState::inProgress);
    const GitVoidResult submodules = updateSubmodules(module, progress);
    if (!submodules) {
      progress.setState(JobProgressState::failed);
      return submodules;
    }
  }
  if (stashed || options.updateSubmodules) progress.update(100, QString(), JobProgressState::succeeded);
  return Unit{};
}

QStringList FastForwardPullCommand::arguments(const QString& remote, const QString& remoteBranchName, const QString& localBranchName,
                                              bool localIsActive) {
  if (localIsActive) {
    return {QStringLiteral("pull"), QStringLiteral("--ff-only"), remote, remoteBranchName, QStringLiteral("--verbose")};
  }
  return {QStringLiteral("fetch"), QStringLiteral("--progress"), remote,
          QStringLiteral("%1:%2").arg(remoteBranchName, localBranchName), QStringLiteral("--verbose")};
}

GitVoidResult FastForwardPullCommand::execute(const GitModule& module, const QString& remote, const QString& remoteBranchName,
                                              const QString& localBranchName, bool localIsActive, bool updateSubmodules,
                                              JobProgress& progress) {
  RemoteOperation operation;
  operation.kind = RemoteOperation::Kind::pull;
  operation.remote = remote;
  const GitVoidResult result = operation.run(module, arguments(remote, remoteBranchName, localBranchName, localIsActive), progress);
  if (!result) return result;
  if (updateSubmodules && localIsActive && PullGitCommand::hasSubmodules(module)) {
    progress.update(100, QStringLiteral("updating submodules..."), JobProgressState::inProgress);
    const GitVoidResult submodules = PullGitCommand::updateSubmodules(module, progress);
    if (!submodules) {
      progress.setState(JobProgressState::failed);
      return submodules;
    }
    progress.update(100, QString(), JobProgressState::succeeded);
  }
  return Unit{};
}

QStringList FastForwardCommand::arguments(const QString& localFullReference, const QString& upstreamFullReference, bool localIsActive) {
  if (localIsActive) return {QStringLiteral("merge"), QStringLiteral("--ff-only"), upstreamFullReference};
  return {QStringLiteral("update-ref"), localFullReference, upstreamFullReference};
}

GitVoidResult FastForwardCommand::execute(const GitModule& module, const QString& localFullReference,
                                          const std::optional<QString>& upstreamFullReference, bool localIsActive, JobProgress* progress) {
  if (!upstreamFullReference) {
    return Error::CannotReachHere{QStringLiteral("Fast-forward can be used only for local branches with a remote tracking reference")};
  }
  return runGitCommand(module, arguments(localFullReference, *upstreamFullReference, localIsActive), progress);
}
