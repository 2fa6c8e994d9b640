#pragma once
// The common road of every command that talks to a remote: the command line goes to the
// job's log, the verb to the status, git's progress meters on stderr become percentages
// while its messages go to the log, a cancel ends quietly, and a failure is classified
// into what the error sheet can explain or repair.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct RemoteOperation {
  enum class Kind { fetch, pull, push, pushMultiple, clone };

  Kind kind = Kind::fetch;
  // The remote a moved tag belongs to; without one there is nothing to fetch again.
  std::optional<QString> remote;
  // The user must not be asked for a password (background work).
  bool noPrompt = false;
  // Where git runs; a clone runs beside the folder it makes.
  std::optional<QString> workingDirectory;

  static QString verb(Kind kind);            // "fetching..."
  static QString failureMessage(Kind kind);  // "fetch failed"

  // Runs `arguments` in the repository with the progress. git's messages without the
  // meters are the error text of a failure.
  GitVoidResult run(const GitModule& module, const QStringList& arguments, JobProgress& progress) const;

  // The error value of a failed run from git's texts.
  static ResultError classify(Kind kind, const QString& output, const QString& error, const GitModule& module,
                              const std::optional<QString>& remote);
};
