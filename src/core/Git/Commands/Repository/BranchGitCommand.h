#pragma once
// The `git branch` operations: create without checkout, rename, delete (with the
// not-fully-merged case told apart), delete a remote-tracking reference, and upstream.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct BranchGitCommand {
  static QStringList createArguments(const QString& name, const QString& startPoint);
  static QStringList renameArguments(const QString& oldName, const QString& newName);
  static QStringList deleteArguments(const QString& name, bool force);
  static QStringList deleteRemoteTrackingArguments(const QString& remoteBranch);
  static QStringList setUpstreamArguments(const QString& name, const QString& upstream);
  static QStringList unsetUpstreamArguments(const QString& name);

  // git's refusal to delete a branch whose commits are nowhere else.
  static bool isNotFullyMerged(const QString& error);

  static GitVoidResult create(const GitModule& module, const QString& name, const QString& startPoint, JobProgress* progress = nullptr);
  static GitVoidResult rename(const GitModule& module, const QString& oldName, const QString& newName, JobProgress* progress = nullptr);
  // Without force an unmerged branch gives `branchNotFullyMerged` with git's text.
  static GitVoidResult remove(const GitModule& module, const QString& name, bool force, JobProgress* progress = nullptr);
  static GitVoidResult removeRemoteTracking(const GitModule& module, const QString& remoteBranch, JobProgress* progress = nullptr);
  // An empty upstream clears it.
  static GitVoidResult setUpstream(const GitModule& module, const QString& name, const QString& upstream, JobProgress* progress = nullptr);
};
