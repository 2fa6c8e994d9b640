#pragma once
// `git push` of one branch (with the refspec the push sheet composes), of several
// branches, of one reference (a tag or a branch), and the deletion of a reference on the
// remote. All report git's progress and classify a refusal as the other remote commands.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct PushBranchOptions {
  QString remote;              // the remote's name
  QString localFullReference;  // "refs/heads/main"
  QString localName;           // "main"
  // The remote branch to push to: its name ("main") and the remote it belongs to.
  std::optional<QString> remoteBranchName;
  QString remoteBranchRemote;
  std::optional<QString> newName;  // a branch the remote does not have yet
  bool force = false;              // always with a lease
  bool tags = false;
  bool setUpstream = false;
};

struct PushGitCommand {
  static QString refspec(const PushBranchOptions& options);
  static QStringList branchArguments(const PushBranchOptions& options);
  static QStringList branchesArguments(const QString& remote, const QStringList& fullReferences);
  static QStringList referenceArguments(const QString& remote, const QString& fullReference);
  static QStringList deleteArguments(const QString& remote, const QString& fullReference);

  static GitVoidResult pushBranch(const GitModule& module, const PushBranchOptions& options, JobProgress& progress);
  // Sets the upstream of every branch.
  static GitVoidResult pushBranches(const GitModule& module, const QString& remote, const QStringList& fullReferences,
                                    JobProgress& progress);
  // One tag or branch by its full reference ("refs/tags/v1.0").
  static GitVoidResult pushReference(const GitModule& module, const QString& remote, const QString& fullReference,
                                     JobProgress& progress);
  // Deletes "refs/heads/<name>" or a tag's reference on the remote.
  static GitVoidResult deleteReference(const GitModule& module, const QString& remote, const QString& fullReference,
                                       JobProgress& progress);
};
