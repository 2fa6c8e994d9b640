#pragma once
#include <QString>
#include <optional>

// Names one repository: every Git command and every settings read takes one.
struct GitModule {
  QString repositoryPath;
  QString gitDirectoryUrl;  // absolute path of the Git directory
  std::optional<QString> superProjectPath;

  // A path inside the Git directory ("jelv-settings", "rebase-merge/onto"). A submodule's
  // or a linked work tree's Git directory is not "<repositoryPath>/.git", so files of
  // the repository are always found from here.
  QString gitDirectoryPath(const QString& relativePath) const { return gitDirectoryUrl + QLatin1Char('/') + relativePath; }

  bool operator==(const GitModule&) const = default;
};
