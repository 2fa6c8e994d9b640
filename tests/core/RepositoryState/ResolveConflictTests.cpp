// Taking one side of a conflict, on real merges.
#include <gtest/gtest.h>

#include <QFile>

#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Commands/Merge/ResolveConflictGitCommand.h"
#include "support/TempRepository.h"

namespace {

// main and topic both edit "notes é.txt"; topic deletes "gone.txt", which main edits.
void mergeWithConflicts(TempRepository& repo) {
  repo.commitFile("notes é.txt", "base\n", "base");
  repo.commitFile("gone.txt", "base\n", "base of gone");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("notes é.txt", "theirs\n", "theirs");
  repo.git({"rm", "-q", "gone.txt"});
  repo.git({"commit", "-q", "-m", "delete gone"});
  repo.git({"checkout", "-q", "main"});
  repo.commitFile("notes é.txt", "mine\n", "mine");
  repo.commitFile("gone.txt", "edited\n", "edit gone");
  repo.git({"merge", "topic"}, true);
}

UnmergedFile unmerged(const TempRepository& repo, const QString& path) {
  const auto files = GetUnmergedFilesGitCommand::execute(repo.module());
  EXPECT_TRUE(files.isSuccess());
  for (const UnmergedFile& file : files.value()) {
    if (file.path == path) return file;
  }
  ADD_FAILURE() << "no conflict at " << path.toStdString();
  return {};
}

}  // namespace

TEST(ResolveConflict, EachSideIsTakenWholeAndADeletingSideRemovesThePath) {
  TempRepository repo;
  mergeWithConflicts(repo);
  const UnmergedFile notes = unmerged(repo, QStringLiteral("notes é.txt"));
  ASSERT_TRUE(ResolveConflictGitCommand::execute(repo.module(), notes, UnmergedFileVersionType::remote).isSuccess());
  EXPECT_EQ(repo.readFile("notes é.txt"), "theirs\n");

  // Their side deleted the file: taking it removes the path from index and work tree.
  const UnmergedFile gone = unmerged(repo, QStringLiteral("gone.txt"));
  ASSERT_FALSE(gone.remoteVersion);
  EXPECT_EQ(ResolveConflictGitCommand::argumentLists(gone, UnmergedFileVersionType::remote),
            (std::vector<QStringList>{{"rm", "--", "gone.txt"}}));
  ASSERT_TRUE(ResolveConflictGitCommand::execute(repo.module(), gone, UnmergedFileVersionType::remote).isSuccess());
  EXPECT_FALSE(QFile::exists(repo.path() + QStringLiteral("/gone.txt")));

  EXPECT_TRUE(GetUnmergedFilesGitCommand::execute(repo.module()).value().empty());
  EXPECT_EQ(repo.git({"-c", "core.quotePath=false", "status", "--porcelain"}), QStringLiteral("D  gone.txt\nM  \"notes é.txt\"\n"));
}

TEST(ResolveConflict, MineKeepsTheLocalVersions) {
  TempRepository repo;
  mergeWithConflicts(repo);
  const UnmergedFile gone = unmerged(repo, QStringLiteral("gone.txt"));
  ASSERT_TRUE(ResolveConflictGitCommand::execute(repo.module(), gone, UnmergedFileVersionType::local).isSuccess());
  EXPECT_EQ(repo.readFile("gone.txt"), "edited\n");
  const UnmergedFile notes = unmerged(repo, QStringLiteral("notes é.txt"));
  ASSERT_TRUE(ResolveConflictGitCommand::execute(repo.module(), notes, UnmergedFileVersionType::local).isSuccess());
  EXPECT_EQ(repo.readFile("notes é.txt"), "mine\n");
  // Both settled on our side: nothing is left to commit but the merge itself.
  EXPECT_TRUE(repo.git({"status", "--porcelain"}).isEmpty());
}
