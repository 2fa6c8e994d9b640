#pragma once
// One tab that was open at the end of a run: its repository and whether it was in front.
#include <QString>

struct RepositorySession {
  QString repositoryPath;
  bool selected = false;
  bool operator==(const RepositorySession&) const = default;
};
