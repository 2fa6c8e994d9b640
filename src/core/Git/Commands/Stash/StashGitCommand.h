#pragma once
// The stash: save the local changes (all of them or chosen paths), keep a snapshot of
// them on the list without touching the working tree, and apply, pop or drop an entry.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct StashGitCommand {
  static QStringList pushArguments(const QString& message, const QStringList& paths = {});
  static QStringList untrackedFilesArguments();
  static QStringList stagePathsArguments(const QStringList& paths);
  static QStringList createArguments();
  static QStringList storeArguments(const QString& commit, const QString& message);
  // "stash@{0}"-style names.
  static QStringList applyArguments(const QString& stash, bool pop);
  static QStringList dropArguments(const QString& stash);

  // Paths of `ls-files -z --others` output.
  static QStringList parsePaths(const QString& output);

  // Saves every local change; with `stageNewFiles` untracked files are staged first, so
  // that they go into the stash too instead of staying behind.
  static GitVoidResult save(const GitModule& module, const QString& message, bool stageNewFiles, JobProgress* progress = nullptr);
  // Saves only `paths`, staged first so that new files among them are taken as well;
  // every other file stays as it was.
  static GitVoidResult savePaths(const GitModule& module, const QString& message, const QStringList& paths,
                                 JobProgress* progress = nullptr);
  // Puts the local changes on the stash list and leaves the working tree and index alone.
  static GitVoidResult snapshot(const GitModule& module, const QString& message, JobProgress* progress = nullptr);
  static GitVoidResult apply(const GitModule& module, const QString& stash, bool pop, JobProgress* progress = nullptr);
  static GitVoidResult drop(const GitModule& module, const QString& stash, JobProgress* progress = nullptr);
};
