#include "Git/Commands/Repository/BranchGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList BranchGitCommand::createArguments(const QString& name, const QString& startPoint) {
  return {QStringLiteral("branch"), QStringLiteral("--no-track"), name, startPoint};
}

QStringList BranchGitCommand::renameArguments(const QString& oldName, const QString& newName) {
  return {QStringLiteral("branch"), QStringLiteral("-m"), oldName, newName};
}

QStringList BranchGitCommand::deleteArguments(const QString& name, bool force) {
  return {QStringLiteral("branch"), force ? QStringLiteral("-D") : QStringLiteral("-d"), name};
}

QStringList BranchGitCommand::deleteRemoteTrackingArguments(const QString& remoteBranch) {
  return {QStringLiteral("branch"), QStringLiteral("-rd"), remoteBranch};
}

QStringList BranchGitCommand::setUpstreamArguments(const QString& name, const QString& upstream) {
  return {QStringLiteral("branch"), QStringLiteral("-u"), upstream, name};
}

QStringList BranchGitCommand::unsetUpstreamArguments(const QString& name) {
  return {QStringLiteral("branch"), QStringLiteral("--unset-upstream"), name};
}

bool BranchGitCommand::isNotFullyMerged(const QString& error) {
  return error.startsWith(QStringLiteral("error: The branch")) && error.contains(QStringLiteral("is not fully merged."));
}

GitVoidResult BranchGitCommand::create(const GitModule& module, const QString& name, const QString& startPoint, JobProgress* progress) {
  return runGitCommand(module, createArguments(name, startPoint), progress);
}

GitVoidResult BranchGitCommand::rename(const GitModule& module, const QString& oldName, const QString& newName, JobProgress* progress) {
  return runGitCommand(module, renameArguments(oldName, newName), progress);
}

GitVoidResult BranchGitCommand::remove(const GitModule& module, const QString& name, bool force, JobProgress* progress) {
  GitVoidResult result = runGitCommand(module, deleteArguments(name, force), progress);
  if (const auto* unknown = result.errorAs<Error::GitUnknownError>(); unknown && !force && isNotFullyMerged(unknown->error)) {
    return Error::BranchNotFullyMerged{unknown->error};
  }
  return result;
}

GitVoidResult BranchGitCommand::removeRemoteTracking(const GitModule& module, const QString& remoteBranch, JobProgress* progress) {
  return runGitCommand(module, deleteRemoteTrackingArguments(remoteBranch), progress);
}

GitVoidResult BranchGitCommand::setUpstream(const GitModule& module, const QString& name, const QString& upstream, JobProgress* progress) {
  return runGitCommand(module, upstream.isEmpty() ? unsetUpstreamArguments(name) : setUpstreamArguments(name, upstream), progress);
}
