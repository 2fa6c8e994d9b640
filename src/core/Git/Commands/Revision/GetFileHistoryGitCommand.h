#pragma once
// The commits that touched one path, newest first, each with the files it changed under
// that path. A file is followed across renames. A path that ends in a slash is a folder:
// its history is that of everything under it, without following (git follows one file).
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
  static bool isFolder(const QString& path) { return path.endsWith(QLatin1Char('/')); }
  static QStringList arguments(const QString& path, const std::optional<QString>& limit);
  static GitResult<std::vector<RevisionWithFiles>> execute(const GitModule& module, const QString& path,
                                                           const std::optional<QString>& limit = std::nullopt,
                                                           Cancelable* cancelation = nullptr);
  static std::vector<RevisionWithFiles> parse(const QString& output);
};
