#include "Git/Commands/Remotes/PushGitCommand.h"

#include "Git/Commands/Remotes/RemoteOperation.h"

QString PushGitCommand::refspec(const PushBranchOptions& options) {
  if (options.remoteBranchName) {
    const QString target = options.remoteBranchRemote == options.remote ? *options.remoteBranchName : options.localName;
    return QStringLiteral("%1:refs/heads/%2").arg(options.localFullReference, target);
  }
  if (options.newName && !options.newName->isEmpty()) return QStringLiteral("%1:%2").arg(options.localFullReference, *options.newName);
  return options.localFullReference;
}

QStringList PushGitCommand::branchArguments(const PushBranchOptions& options) {
  QStringList args{QStringLiteral("-c"), QStringLiteral("push.default=upstream"), QStringLiteral("push"), options.remote,
                   refspec(options)};
  if (options.force) args << QStringLiteral("--force-with-lease");
  if (options.tags) args << QStringLiteral("--tags");
  if (options.setUpstream) args << QStringLiteral("--set-upstream");
  args << QStringLiteral("--verbose") << QStringLiteral("--progress");
  return args;
}

QStringList PushGitCommand::branchesArguments(const QString& remote, const QStringList& fullReferences) {
  QStringList args{QStringLiteral("push"), remote};
  args << fullReferences;
  args << QStringLiteral("--set-upstream") << QStringLiteral("--verbose") << QStringLiteral("--progress");
  return args;
}

QStringList PushGitCommand::referenceArguments(const QString& remote, const QString& fullReference) {
  return {QStringLiteral("push"), remote, fullReference, QStringLiteral("--progress"), QStringLiteral("--verbose")};
}

QStringList PushGitCommand::deleteArguments(const QString& remote, const QString& fullReference) {
  return {QStringLiteral("push"), remote, QStringLiteral("--delete"), fullReference};
}

namespace {

GitVoidResult runPush(const GitModule& module, const QStringList& arguments, RemoteOperation::Kind kind, JobProgress& progress) {
  RemoteOperation operation;
  operation.kind = kind;
  return operation.run(module, arguments, progress);
}

}  // namespace

GitVoidResult PushGitCommand::pushBranch(const GitModule& module, const PushBranchOptions& options, JobProgress& progress) {
  return runPush(module, branchArguments(options), RemoteOperation::Kind::push, progress);
}

GitVoidResult PushGitCommand::pushBranches(const GitModule& module, const QString& remote, const QStringList& fullReferences,
                                           JobProgress& progress) {
  return runPush(module, branchesArguments(remote, fullReferences), RemoteOperation::Kind::pushMultiple, progress);
}

GitVoidResult PushGitCommand::pushReference(const GitModule& module, const QString& remote, const QString& fullReference,
                                            JobProgress& progress) {
  return runPush(module, referenceArguments(remote, fullReference), RemoteOperation::Kind::push, progress);
}

GitVoidResult PushGitCommand::deleteReference(const GitModule& module, const QString& remote, const QString& fullReference,
                                              JobProgress& progress) {
  return runPush(module, deleteArguments(remote, fullReference), RemoteOperation::Kind::push, progress);
}
