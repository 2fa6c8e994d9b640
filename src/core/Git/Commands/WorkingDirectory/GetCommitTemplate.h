#pragma once
// Reads "commit.template" from the local or the global configuration.
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ConfigLocation.h"
#include "Models/GitModule.h"

struct GetCommitTemplate {
  // The configured path, or nothing when the key isn't set (git exits 1 then).
  static GitResult<std::optional<QString>> execute(const GitModule& module, ConfigLocation configLocation);
  // The template's text; "~/" and paths relative to the working directory resolved as git does.
  static std::optional<QString> readTemplate(const GitModule& module, const QString& templatePath);
};
