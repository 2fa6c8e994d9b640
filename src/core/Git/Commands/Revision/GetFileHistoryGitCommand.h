#pragma once
// The commits that touched one path, newest first, following it across renames, each
// with the files it changed under that path.
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/RevisionWithFiles.h"

class Cancelable;

struct GetFileHistoryGitCommand {
  // `limit` narrows the commits, as "main" or "v1.0..HEAD" would.
  static QStringList arguments(const QString& path, const std::optional<QString>& limit);
  static GitResult<std::vector<RevisionWithFiles>> execute(const GitModule& module, const QString& path,
                                                           const std::optional<QString>& limit = std::nullopt,
                                                           Cancelable* cancelation = nullptr);
  static std::vector<RevisionWithFiles> parse(const QString& output);
};
