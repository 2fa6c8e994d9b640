#pragma once
#include <QHash>
#include <QString>
#include <optional>

#include "Models/BehindAheadInfo.h"

// Ahead and behind counts by the branch's full reference ("refs/heads/main"). Branches
// level with their upstream, or without one, have no entry.
class BehindAheadInfoCache {
 public:
  QHash<QString, BehindAheadInfo> entries;

  std::optional<BehindAheadInfo> info(const QString& fullReference) const {
    auto found = entries.constFind(fullReference);
    if (found == entries.constEnd()) return std::nullopt;
    return found.value();
  }

  bool operator==(const BehindAheadInfoCache&) const = default;
};
