#pragma once
// Tells apart the failures of git that the user can repair from the generic ones. Every
// command's failed response goes through here (toResultError), so a stale index.lock is
// recognised the same way whichever command ran into it.
#include <QString>

#include "Git/ResultError.h"

struct ErrorClassification {
  // git's own wording when another process (or a crashed one) left the index locked.
  static bool isRepositoryLocked(const QString& error);

  // The error value for a git run that failed with this output and error text.
  static ResultError classify(const QString& output, const QString& error);
};
