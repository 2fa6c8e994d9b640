#pragma once
#include <QString>

// The branch names and prefixes of the Git Flow model, as the repository's config holds them.
struct GitFlowSettings {
  QString masterBranch;
  QString developBranch;
  QString featurePrefix;
  QString releasePrefix;
  QString hotfixPrefix;
  QString versionTag;

  bool operator==(const GitFlowSettings&) const = default;
};
