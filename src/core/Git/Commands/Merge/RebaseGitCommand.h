#pragma once
// Rebases the checked-out branch onto a target. A rebase stopped by conflicts is no
// failure: the repository's state shows it and the notification bar takes over.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct RebaseGitCommand {
  static QStringList arguments(const QString& target, bool autostash, const QString& signingKey);
  static GitVoidResult execute(const GitModule& module, const QString& target, bool autostash, const QString& signingKey,
                               JobProgress* progress = nullptr);
  // A rebase is under way in the repository (git left its state folder).
  static bool isInProgress(const GitModule& module);
};
