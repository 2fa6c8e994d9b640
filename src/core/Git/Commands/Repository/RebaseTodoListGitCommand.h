#pragma once
// The todo file of an interactive rebase on its way through the sheet: read into items
// (newest first, each commit's details asked of git), written back with the messages
// the run will need beside it, and the name of the branch that keeps the old history.
#include <QDateTime>
#include <QString>
#include <vector>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/TodoListItem.h"

struct RebaseTodoListGitCommand {
  // Whether git handed over this file for a rebase of `module`.
  static bool belongsTo(const GitModule& module, const QString& todoPath);

  // Every commit starts as a pick; the list is newest first.
  static GitResult<std::vector<TodoListItem>> read(const GitModule& module, const QString& todoPath);
  // The todo file (oldest first, "noop" when empty) and the message archive beside it.
  static GitVoidResult write(const QString& todoPath, const std::vector<TodoListItem>& items);

  // "backup/<branch>-<time>", the time with "-" for ":" to make a valid branch name.
  static QString backupBranchName(const QString& branch, const QDateTime& now);
};
