#pragma once
// What a change of one commit, or between two commits, resolves to.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/FileContent/DiffFileContent.h"
#include "Models/FileContent/DiffSettings.h"
#include "Models/GitModule.h"

class Cancelable;

struct GetRevisionFileChangesGitCommand {
  static QStringList arguments(const QString& sha, const QString& otherSha, const ChangedFile& file, const DiffSettings& settings);

  // Without otherSha the commit is compared with its first parent, or with the empty
  // tree when it is a root commit.
  static GitResult<DiffFileContentPtr> execute(const GitModule& module, const QString& sha, const std::optional<QString>& otherSha,
                                               const ChangedFilePtr& file, const DiffSettings& settings,
                                               Cancelable* progress = nullptr);
  // otherSha is the old side, sha the new one. Canceled before or after the run gives Canceled.
  static GitResult<DiffFileContentPtr> executeInternal(const GitModule& module, const QString& sha, const QString& otherSha,
                                                       const ChangedFilePtr& file, const DiffSettings& settings,
                                                       Cancelable* progress = nullptr);
};
