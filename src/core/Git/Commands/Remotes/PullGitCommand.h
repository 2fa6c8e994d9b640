#pragma once
// `git pull` of one remote branch, and the whole pull of the pull sheet: local changes
// of a merge pull are put aside in a stash of our own and restored afterwards (a rebase
// pull uses git's autostash), then submodules follow when the user wants that.
#include <QDateTime>
#include <QString>
#include <optional>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct PullOptions {
  QString remote;
  QString branch;  // the remote branch's name without the remote
  bool rebase = false;
  bool stashAndReapply = false;
  bool updateSubmodules = false;
};

struct PullGitCommand {
  static QStringList arguments(const QString& remote, const QString& branch, bool rebase, bool autostash);
  static QStringList stashArguments(const QString& message);
  static QStringList restoreStashArguments();
  static QStringList updateSubmodulesArguments();
  static QString stashMessage(const QDateTime& now);

  // The pull alone.
  static GitVoidResult execute(const GitModule& module, const QString& remote, const QString& branch, bool rebase, bool autostash,
                               JobProgress& progress);
  // Stash, pull, restore, submodules, with the progress told at each step. A failed or
  // canceled pull leaves the stash in the list.
  static GitVoidResult run(const GitModule& module, const PullOptions& options, JobProgress& progress);

  // Tracked files differ from HEAD (untracked ones are not stashed anyway).
  static bool hasLocalChanges(const GitModule& module);
  static bool hasSubmodules(const GitModule& module);
  // `submodule update --init --recursive` with its progress.
  static GitVoidResult updateSubmodules(const GitModule& module, JobProgress& progress);
};

// Fast-forward of a local branch to its remote branch over the network: a fetch into the
// branch when it is not checked out, a fast-forward-only pull when it is.
struct FastForwardPullCommand {
  static QStringList arguments(const QString& remote, const QString& remoteBranchName, const QString& localBranchName,
                               bool localIsActive);
  static GitVoidResult execute(const GitModule& module, const QString& remote, const QString& remoteBranchName,
                               const QString& localBranchName, bool localIsActive, bool updateSubmodules, JobProgress& progress);
};

// Fast-forward to the remote-tracking reference already fetched; no network.
struct FastForwardCommand {
  static QStringList arguments(const QString& localFullReference, const QString& upstreamFullReference, bool localIsActive);
  static GitVoidResult execute(const GitModule& module, const QString& localFullReference,
                               const std::optional<QString>& upstreamFullReference, bool localIsActive, JobProgress* progress);
};
