#pragma once
// Applies the changes of commits on top of the checked-out one, in the given order.
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct CherryPickGitCommand {
  struct Options {
    std::optional<int> parentNumber;  // the mainline, for a merge commit
    bool commit = true;               // false: leave the changes staged
    QString signingKey;
  };
  static QStringList arguments(const QStringList& shas, const Options& options);
  static GitVoidResult execute(const GitModule& module, const QStringList& shas, const Options& options, JobProgress* progress = nullptr);
};
