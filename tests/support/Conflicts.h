#pragma once
// Conflicts made by real git: a base commit, a local and a remote change of one file,
// then a merge, rebase or cherry-pick that stops on it.
#include <QString>
#include <gtest/gtest.h>

#include <memory>

#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Merge/LoadMergeConflict.h"
#include "support/TempRepository.h"

enum class ConflictOperation { merge, rebase, cherryPick };

struct ConflictSides {
  std::optional<QByteArray> base;  // none: both sides add the file
  std::optional<QByteArray> local;  // none: the local side deletes it
  std::optional<QByteArray> remote;
};

inline void makeConflict(const TempRepository& repo, const QString& path, const ConflictSides& sides,
                         ConflictOperation operation = ConflictOperation::merge, bool diff3 = false) {
  repo.git({QStringLiteral("config"), QStringLiteral("merge.conflictStyle"), diff3 ? QStringLiteral("diff3") : QStringLiteral("merge")});
  repo.commitFile(QStringLiteral("README"), "start\n", QStringLiteral("start"));
  if (sides.base) repo.commitFile(path, *sides.base, QStringLiteral("base"));
  const auto apply = [&](const std::optional<QByteArray>& content, const QString& message) {
    if (content) repo.writeFile(path, *content);
    else repo.removeFile(path);
    repo.git({QStringLiteral("add"), QStringLiteral("-A")});
    repo.git({QStringLiteral("commit"), QStringLiteral("-q"), QStringLiteral("-m"), message});
  };
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("theirs")});
  apply(sides.remote, QStringLiteral("remote change"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  apply(sides.local, QStringLiteral("local change"));
  switch (operation) {
    case ConflictOperation::merge: repo.git({QStringLiteral("merge"), QStringLiteral("theirs")}, true); break;
    case ConflictOperation::cherryPick: repo.git({QStringLiteral("cherry-pick"), QStringLiteral("theirs")}, true); break;
    case ConflictOperation::rebase:
      // Rebasing the remote change onto the local one: git's "ours" is then the local side.
      repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("theirs")});
      repo.git({QStringLiteral("rebase"), QStringLiteral("main")}, true);
      break;
  }
}

inline std::shared_ptr<MergeConflict> loadConflict(const TempRepository& repo, const QString& path) {
  auto result = LoadMergeConflict::execute(repo.module(), path);
  return result.isSuccess() ? result.value() : nullptr;
}

inline UnmergedFile unmerged(const TempRepository& repo, const QString& path) {
  const auto files = GetUnmergedFilesGitCommand::execute(repo.module());
  EXPECT_TRUE(files.isSuccess());
  for (const UnmergedFile& file : files.value()) {
    if (file.path == path) return file;
  }
  ADD_FAILURE() << "no conflict at " << path.toStdString();
  return {};
}
