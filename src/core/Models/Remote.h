#pragma once
#include <QString>

#include "Models/RepositoryUrl.h"

// A remote of the repository's configuration.
struct Remote {
  QString name;
  RepositoryUrl repositoryUrl;
  bool disableImplicitFetch = false;  // "remote.<name>.disableimplicitfetch" is "true"

  bool operator==(const Remote&) const = default;
};
