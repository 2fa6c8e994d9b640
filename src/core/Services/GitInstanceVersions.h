#pragma once
// The Git instances the preferences offer, each with the version it reports. An
// instance whose version cannot be read (not installed, not executable, not git) is
// left out.
#include <QString>
#include <optional>
#include <vector>

#include "Git/Process/GitInstanceType.h"

struct GitInstanceVersions {
  struct Entry {
    GitInstanceType instance;
    QString version;
    bool operator==(const Entry&) const = default;
  };

  // local, system, brew, then the custom path if one is given. Runs each executable:
  // call it off the main thread.
  static std::vector<Entry> read(const std::optional<QString>& customPath);
  // "system — 2.39.2 (/usr/bin/git)"
  static QString title(const Entry& entry);
};
