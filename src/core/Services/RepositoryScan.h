#pragma once
// Fills the registry from the disk: the walk that finds repositories below a folder,
// the rescan of the user's source folder, and the addition of paths by hand.
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "Models/RepositoryValidation.h"

class AppSettings;

struct RepositoryScan {
  static constexpr int startLevel = 5;

  // Appends every folder that holds a ".git" directory, walking at most `level` folders
  // deep. A repository's own sub-folders are not entered, so nested repositories are
  // not found. Links to folders are followed.
  static void findGitRepositories(const QString& folder, QStringList& result, int level);

  // Replaces the registry's repositories (categories stay) by those found in the folder,
  // in one transaction once the walk and the checks are done. Runs git for each repository found: call it off the main thread. Gives the
  // number of repositories added. `progress` hears (validated, found) from worker threads
  // while the repositories found are checked.
  using Progress = std::function<void(int done, int total)>;
  static int rescanRepositories(AppSettings& settings, const std::optional<QString>& sourceFolder,
                                const Progress& progress = {});

  struct Refused {
    QString path;
    RepositoryRefusal refusal = RepositoryRefusal::notARepository;
    bool operator==(const Refused&) const = default;
  };
  // Validates and adds each path, with the source folder as the root of its categories.
  // A refused path does not stop the others. Runs git: call it off the main thread.
  static std::vector<Refused> addRepositories(AppSettings& settings, const QStringList& paths,
                                              const std::optional<QString>& sourceFolder);
};
