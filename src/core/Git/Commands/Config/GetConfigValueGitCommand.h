#pragma once
// Reads one key of the local or the global configuration ("user.name").
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ConfigLocation.h"
#include "Models/GitModule.h"

struct GetConfigValueGitCommand {
  // Nothing when the key isn't set there (git exits 1 then).
  static GitResult<std::optional<QString>> execute(const GitModule& module, const QString& key, ConfigLocation location);
  static QStringList arguments(const QString& key, ConfigLocation location);
};
