#pragma once
// Makes a commit that undoes another (or leaves the undoing changes staged).
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct RevertGitCommand {
  struct Options {
    std::optional<int> parentNumber;  // the mainline, for a merge commit
    bool commit = true;
    QString signingKey;
  };
  static QStringList arguments(const QString& sha, const Options& options);
  static GitVoidResult execute(const GitModule& module, const QString& sha, const Options& options, JobProgress* progress = nullptr);
};
