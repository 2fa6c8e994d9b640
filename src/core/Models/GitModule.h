#pragma once
#include <QString>
#include <optional>

// Names one repository: every Git command and every settings read takes one.
struct GitModule {
  QString repositoryPath;
  QString gitDirectoryUrl;  // absolute path of the Git directory
  std::optional<QString> superProjectPath;

  bool operator==(const GitModule&) const = default;
};
