#pragma once
#include <QString>
#include <memory>
#include <vector>

#include "Git/Process/Task.h"
#include "Models/ChangedFile.h"
#include "support/TempRepository.h"

inline ChangedFilePtr changedFile(const QString& path, ChangeType type, bool staged, bool isNew = false, bool isDirectory = false,
                                  std::optional<QString> oldPath = std::nullopt) {
  auto file = std::make_shared<ChangedFile>();
  file->path = path;
  file->oldPath = std::move(oldPath);
  file->changeType = type;
  file->staged = staged;
  file->tracked = !isNew;
  file->isNew = isNew;
  file->isDirectory = isDirectory;
  return file;
}

// Paths that git lists with -z, so blanks and non-ASCII arrive as they are.
inline QStringList gitPaths(const TempRepository& repo, const QStringList& args) {
  const QByteArray out = repo.gitBytes(args + QStringList{"-z"});
  QStringList paths;
  for (const QByteArray& piece : out.split('\0')) {
    if (!piece.isEmpty()) paths << QString::fromUtf8(piece);
  }
  paths.sort();
  return paths;
}

inline QStringList stagedPaths(const TempRepository& repo) { return gitPaths(repo, {"diff", "--cached", "--name-only"}); }
inline QStringList untrackedPaths(const TempRepository& repo) {
  return gitPaths(repo, {"ls-files", "--others", "--exclude-standard"});
}
inline QStringList modifiedPaths(const TempRepository& repo) { return gitPaths(repo, {"diff", "--name-only"}); }

// Counts the git children an operation starts.
class LaunchCounter {
 public:
  LaunchCounter() : start_(Task::launchCount.load()) {}
  long count() const { return Task::launchCount.load() - start_; }

 private:
  long start_;
};
