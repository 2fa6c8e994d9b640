#pragma once
// Renames a local branch and, when asked, its branch on the remote: the new name is
// pushed with tracking first, so that nothing is lost if the delete of the old one fails.
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct RenameBranchGitCommand {
  static QStringList pushNewNameArguments(const QString& remote, const QString& newName);
  static QStringList deleteOldNameArguments(const QString& remote, const QString& oldName);
  static GitVoidResult execute(const GitModule& module, const QString& oldName, const QString& newName,
                               const std::optional<QString>& remote, JobProgress* progress = nullptr);
};
