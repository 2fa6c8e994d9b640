#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Remote.h"

// The remotes of the configuration, in git's order. A remote without a url is none.
struct GetRemotesGitCommand {
  static QStringList arguments();
  // "remote.origin.url https://host/repo.git" lines.
  static std::vector<Remote> parse(const QString& output);
  static GitResult<std::vector<Remote>> execute(const GitModule& module);
};
