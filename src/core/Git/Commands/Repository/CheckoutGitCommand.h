#pragma once
// Checks out a branch or a revision, and the two forms that make a branch as they check
// it out: one that tracks a remote branch and one that does not.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct CheckoutGitCommand {
  static QStringList checkoutArguments(const QString& target);
  static QStringList trackArguments(const QString& localName, const QString& remoteBranch);
  static QStringList newBranchArguments(const QString& name, const QString& startPoint);
  static QStringList fastForwardArguments(const QString& remoteBranch);

  static GitVoidResult checkout(const GitModule& module, const QString& target, JobProgress* progress = nullptr);
  // A local branch `localName` that tracks `remoteBranch` ("origin/topic"), checked out.
  static GitVoidResult track(const GitModule& module, const QString& localName, const QString& remoteBranch,
                             JobProgress* progress = nullptr);
  // A new branch at `startPoint` without tracking, checked out.
  static GitVoidResult newBranch(const GitModule& module, const QString& name, const QString& startPoint,
                                 JobProgress* progress = nullptr);
  // Checks out the local twin of a remote branch and fast-forwards it to the remote one;
  // a twin with commits of its own is checked out and left as it is (git refuses).
  static GitVoidResult checkoutAndFastForward(const GitModule& module, const QString& localName, const QString& remoteBranch,
                                              JobProgress* progress = nullptr);
};
