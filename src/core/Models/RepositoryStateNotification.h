#pragma once
// The words of the notification bar above the commit list, made from the state alone.
#include <QString>
#include <optional>

#include "Models/RepositoryState.h"

struct RepositoryStateNotification {
  QString message;
  std::optional<QString> mainAction;  // "Resolve", "Good"; the other buttons belong to their commands

  bool operator==(const RepositoryStateNotification&) const = default;

  // Nothing for a repository with nothing under way.
  static std::optional<RepositoryStateNotification> make(const RepositoryState& state);
};
