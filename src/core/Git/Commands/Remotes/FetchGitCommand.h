#pragma once
// `git fetch` of one remote, of all remotes, or of the configured default.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct FetchTarget {
  enum class Kind { remote, all, defaultTarget };
  Kind kind = Kind::defaultTarget;
  QString remote;  // the remote's name, for `remote`

  static FetchTarget ofRemote(QString name) { return {Kind::remote, std::move(name)}; }
  static FetchTarget all() { return {Kind::all, {}}; }
  static FetchTarget defaultTarget() { return {Kind::defaultTarget, {}}; }
  bool operator==(const FetchTarget&) const = default;
};

struct FetchOptions {
  bool prune = false;
  bool tags = false;
  bool force = false;
  bool noPrompt = false;  // background work: nobody is asked for a password
};

struct FetchGitCommand {
  static QStringList arguments(const FetchTarget& target, const FetchOptions& options);
  // A moved tag gives `tagMismatch` only with a remote to fetch again from.
  static GitVoidResult execute(const GitModule& module, const FetchTarget& target, const FetchOptions& options,
                               JobProgress& progress);
};
