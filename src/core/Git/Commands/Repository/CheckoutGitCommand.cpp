#include "Git/Commands/Repository/CheckoutGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList CheckoutGitCommand::checkoutArguments(const QString& target) {
  return {QStringLiteral("checkout"), QStringLiteral("--progress"), target};
}

QStringList CheckoutGitCommand::trackArguments(const QString& localName, const QString& remoteBranch) {
  return {QStringLiteral("checkout"), QStringLiteral("--track"), QStringLiteral("-b"), localName, remoteBranch};
}

QStringList CheckoutGitCommand::newBranchArguments(const QString& name, const QString& startPoint) {
  return {QStringLiteral("checkout"), QStringLiteral("--no-track"), QStringLiteral("-b"), name, startPoint};
}

QStringList CheckoutGitCommand::fastForwardArguments(const QString& remoteBranch) {
  return {QStringLiteral("merge"), QStringLiteral("--ff-only"), remoteBranch};
}

GitVoidResult CheckoutGitCommand::checkoutAndFastForward(const GitModule& module, const QString& localName, const QString& remoteBranch,
                                                         JobProgress* progress) {
  if (GitVoidResult done = checkout(module, localName, progress); !done) return done;
  return runGitCommand(module, fastForwardArguments(remoteBranch), progress);
}

GitVoidResult CheckoutGitCommand::checkout(const GitModule& module, const QString& target, JobProgress* progress) {
  return runGitCommand(module, checkoutArguments(target), progress);
}

GitVoidResult CheckoutGitCommand::track(const GitModule& module, const QString& localName, const QString& remoteBranch,
                                        JobProgress* progress) {
  return runGitCommand(module, trackArguments(localName, remoteBranch), progress);
}

GitVoidResult CheckoutGitCommand::newBranch(const GitModule& module, const QString& name, const QString& startPoint,
                                            JobProgress* progress) {
  return runGitCommand(module, newBranchArguments(name, startPoint), progress);
}
