// Stash operations on real repositories: what stays in the working tree and what goes
// onto the stash list.
#include <gtest/gtest.h>

#include "Git/Commands/Stash/StashGitCommand.h"
#include "support/TempRepository.h"

namespace {

QString trimmed(const QString& text) { return text.trimmed(); }

// Two tracked files and the short status of a fresh change to each.
void twoFiles(TempRepository& repo) {
  repo.writeFile("a.txt", "a\n");
  repo.writeFile("b file ä.txt", "b\n");
  repo.commit("Initial");
}

QStringList stashList(const TempRepository& repo) {
  return repo.git({"stash", "list", "--format=%gs"}).split('\n', Qt::SkipEmptyParts);
}

}  // namespace

TEST(StashGitCommandTest, SaveTakesNewFilesOnlyWhenAskedTo) {
  for (const bool stageNewFiles : {true, false}) {
    SCOPED_TRACE(stageNewFiles);
    TempRepository repo;
    twoFiles(repo);
    repo.writeFile("a.txt", "a changed\n");
    repo.writeFile("new.txt", "new\n");

    ASSERT_TRUE(StashGitCommand::save(repo.module(), "work in progress", stageNewFiles).isSuccess());
    EXPECT_EQ(stashList(repo), QStringList{"On main: work in progress"});
    EXPECT_EQ(repo.readFile("a.txt"), "a\n");
    // Left behind, or stashed and gone with the rest.
    EXPECT_EQ(trimmed(repo.git({"status", "--porcelain"})), stageNewFiles ? QString() : "?? new.txt");

    ASSERT_TRUE(StashGitCommand::apply(repo.module(), "stash@{0}", true).isSuccess());
    EXPECT_EQ(repo.readFile("a.txt"), "a changed\n");
    EXPECT_EQ(repo.readFile("new.txt"), "new\n");
    EXPECT_TRUE(stashList(repo).isEmpty());
  }
}

TEST(StashGitCommandTest, PartialStashLeavesTheOtherFilesAsTheyWere) {
  TempRepository repo;
  twoFiles(repo);
  repo.writeFile("c.txt", "c\n");
  repo.commit("c");
  repo.writeFile("a.txt", "a changed\n");
  repo.writeFile("b file ä.txt", "b staged\n");
  repo.git({"add", "b file ä.txt"});
  repo.writeFile("c.txt", "c changed\n");
  repo.writeFile("new one.txt", "new\n");
  const QString otherStatusBefore = repo.git({"status", "--porcelain", "--", "b file ä.txt", "c.txt"});

  ASSERT_TRUE(StashGitCommand::savePaths(repo.module(), "only a", {"a.txt", "new one.txt"}).isSuccess());

  EXPECT_EQ(stashList(repo), QStringList{"On main: only a"});
  EXPECT_EQ(repo.readFile("a.txt"), "a\n");
  EXPECT_FALSE(QFile::exists(repo.path() + "/new one.txt"));
  // The staged one stays staged, the unstaged one unstaged.
  EXPECT_EQ(repo.git({"status", "--porcelain", "--", "b file ä.txt", "c.txt"}), otherStatusBefore);
  EXPECT_EQ(repo.readFile("c.txt"), "c changed\n");
  const QString stashed = repo.git({"stash", "show", "--name-only", "stash@{0}"});
  EXPECT_TRUE(stashed.contains("a.txt") && stashed.contains("new one.txt")) << stashed.toStdString();
  EXPECT_FALSE(stashed.contains("c.txt"));

  const GitVoidResult unknown = StashGitCommand::savePaths(repo.module(), "x", {"no such file"});
  EXPECT_TRUE(unknown.isError<Error::GitUnknownError>());
}

TEST(StashGitCommandTest, SnapshotKeepsTheWorkingTreeAndIndexUntouched) {
  TempRepository repo;
  twoFiles(repo);
  // Nothing to save is a plain message, for a snapshot as for a stash.
  for (const GitVoidResult& result : {StashGitCommand::save(repo.module(), "m", true), StashGitCommand::snapshot(repo.module(), "m")}) {
    ASSERT_TRUE(result.isError<Error::Generic>());
    EXPECT_EQ(std::get<Error::Generic>(result.error()).text, "There are no local changes to stash.");
  }
  EXPECT_TRUE(stashList(repo).isEmpty());

  repo.writeFile("a.txt", "a changed\n");
  repo.writeFile("b file ä.txt", "b staged\n");
  repo.git({"add", "b file ä.txt"});
  const QString statusBefore = repo.git({"status", "--porcelain"});

  ASSERT_TRUE(StashGitCommand::snapshot(repo.module(), "Snapshot before refactoring").isSuccess());

  EXPECT_EQ(repo.git({"status", "--porcelain"}), statusBefore);
  EXPECT_EQ(repo.readFile("a.txt"), "a changed\n");
  EXPECT_EQ(stashList(repo), QStringList{"Snapshot before refactoring"});
  // The snapshot holds the changes: thrown away, they come back from it.
  repo.git({"reset", "-q", "--hard"});
  ASSERT_TRUE(StashGitCommand::apply(repo.module(), "stash@{0}", false).isSuccess());
  EXPECT_EQ(repo.readFile("a.txt"), "a changed\n");
  EXPECT_EQ(repo.readFile("b file ä.txt"), "b staged\n");
  EXPECT_EQ(stashList(repo).size(), 1);  // apply keeps the entry
}

TEST(StashGitCommandTest, DropRemovesTheChosenEntryOnlyAndAConflictingPopKeepsIt) {
  TempRepository repo;
  twoFiles(repo);
  repo.writeFile("a.txt", "first\n");
  ASSERT_TRUE(StashGitCommand::save(repo.module(), "first", false).isSuccess());
  repo.writeFile("a.txt", "second\n");
  ASSERT_TRUE(StashGitCommand::save(repo.module(), "second", false).isSuccess());

  ASSERT_TRUE(StashGitCommand::drop(repo.module(), "stash@{1}").isSuccess());
  EXPECT_EQ(stashList(repo), QStringList{"On main: second"});

  // A change in the way: git refuses and the entry stays on the list.
  repo.writeFile("a.txt", "in the way\n");
  EXPECT_TRUE(StashGitCommand::apply(repo.module(), "stash@{0}", true).isFailure());
  EXPECT_EQ(stashList(repo), QStringList{"On main: second"});
  EXPECT_EQ(repo.readFile("a.txt"), "in the way\n");
}
