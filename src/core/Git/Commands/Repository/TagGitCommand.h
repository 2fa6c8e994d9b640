#pragma once
// Annotated tags: create (signed when the repository signs its commits) and delete.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct TagGitCommand {
  // An empty `signingKey` makes an unsigned tag; the message may be empty.
  static QStringList createArguments(const QString& name, const QString& sha, const QString& message, const QString& signingKey = {});
  static QStringList deleteArguments(const QString& name);

  static GitVoidResult create(const GitModule& module, const QString& name, const QString& sha, const QString& message,
                              const QString& signingKey = {}, JobProgress* progress = nullptr);
  static GitVoidResult remove(const GitModule& module, const QString& name, JobProgress* progress = nullptr);
};
