#pragma once
// Writes or removes one key of the local or the global configuration.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ConfigLocation.h"
#include "Models/GitModule.h"

struct SetConfigValueGitCommand {
  // Without a value the key is removed; removing a key that isn't there succeeds.
  static GitVoidResult execute(const GitModule& module, const QString& key, const std::optional<QString>& value,
                               ConfigLocation location);
  static QStringList arguments(const QString& key, const std::optional<QString>& value, ConfigLocation location);
};
