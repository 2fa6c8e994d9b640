#pragma once
#include <QString>
#include <optional>

#include "Models/GitModule.h"

// What a repository tab is opened with: the module and how the registry names and tags it.
struct RepositoryInfo {
  GitModule gitModule;
  QString name;
  std::optional<int> colorTag;

  bool operator==(const RepositoryInfo&) const = default;
};
