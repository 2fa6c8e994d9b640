#pragma once
// `git rebase -i` with Jelv's rebase editor as both the sequence editor and the commit
// editor: git hands the todo list to the application, which shows it in a sheet and
// writes it back; messages are answered from the message archive while git runs. The
// call blocks until git ends, the todo stage included.
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct InteractiveRebaseGitCommand {
  struct Options {
    std::optional<QString> destination;  // the commit to rebase onto; none with root
    bool root = false;                   // down to the first commit
    QString signingKey;                  // empty: commits are not signed
  };

  static QStringList arguments(const Options& options, const QString& editorPath, const QString& gpgProgram);
  // The editor path in the form git's editor settings take it.
  static QString editorSetting(const QString& editorPath);

  // A rebase that stops at a conflict or has nothing to do is no failure: the
  // repository's state tells what comes next.
  static bool isSuccessfulStop(const QString& errorOutput);

  static GitVoidResult execute(const GitModule& module, const Options& options, JobProgress* progress = nullptr);
};
