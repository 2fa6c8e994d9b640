#pragma once
// Writes a commit template and points the repository's "commit.template" at it.
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct SetCommitTemplateGitCommand {
  // "commit_msg_template.txt" in the Git directory.
  static QString defaultPath(const GitModule& module);
  // Without a path the default one is used.
  static GitVoidResult execute(const GitModule& module, const std::optional<QString>& path, const QString& content);
};
