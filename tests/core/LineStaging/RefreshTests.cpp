#include <gtest/gtest.h>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetPathsStatusGitCommand.h"
#include "Models/StagingRefresh.h"
#include "support/TempRepository.h"

namespace {

ChangedFileList fullStatus(const TempRepository& repo) {
  auto result = GetChangedFilesGitCommand::execute(repo.module(), {}, false, false);
  EXPECT_TRUE(result);
  return result ? result.value().changedFiles : ChangedFileList{};
}

QStringList describe(const ChangedFileList& files) {
  QStringList lines;
  for (const ChangedFilePtr& file : files) {
    lines << QStringLiteral("%1 %2%3 %4")
                 .arg(file->staged ? u"S" : u"W")
                 .arg(file->oldPath ? *file->oldPath + " -> " : QString())
                 .arg(file->path)
                 .arg(ChangedFile::changeTypeName(file->changeType));
  }
  return lines;
}

// After a change to some paths, reading just those paths and merging gives the list a
// full status read gives.
void expectMergeMatchesFullRead(const TempRepository& repo, const ChangedFileList& before, const QStringList& changed) {
  const QStringList paths = StagingRefresh::pathsToRead(before, changed);
  const auto fresh = GetPathsStatusGitCommand::execute(repo.module(), paths, {}, false, false);
  ASSERT_TRUE(fresh);
  EXPECT_EQ(describe(StagingRefresh::merged(before, paths, fresh.value())), describe(fullStatus(repo)));
}

}  // namespace

TEST(StagingRefreshOfPaths, MergingTheReadOfTheTouchedPathsMatchesAFullRead) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\nb\n", "base");
  repo.commitFile("a1.txt", "x\n", "a1");
  repo.commitFile("a[1].txt", "y\n", "brackets");
  repo.commitFile("old name.txt", "moved\n", "to move");
  repo.writeFile("a.txt", "a\nb\nc\n");
  repo.writeFile("a1.txt", "x2\n");
  repo.writeFile("untracked.txt", "u\n");
  repo.git({"mv", "old name.txt", "new name.txt"});
  repo.writeFile("new name.txt", "moved\nand changed\n");

  // Part of a.txt staged: its entry now stands on both sides.
  ChangedFileList before = fullStatus(repo);
  repo.git({"add", "a.txt"});
  repo.writeFile("a.txt", "a\nb\nc\nd\n");
  expectMergeMatchesFullRead(repo, before, {"a.txt"});

  // A path with pattern characters is a name: "a[1].txt" doesn't read a1.txt.
  before = fullStatus(repo);
  repo.writeFile("a[1].txt", "y2\n");
  expectMergeMatchesFullRead(repo, before, {"a[1].txt"});
  const auto literal = GetPathsStatusGitCommand::execute(repo.module(), {"a[1].txt"}, {}, false, false);
  ASSERT_TRUE(literal);
  EXPECT_EQ(describe(literal.value()), QStringList{"W a[1].txt modified"});

  // The moved file's change is staged: the read covers both of its paths.
  before = fullStatus(repo);
  repo.git({"add", "new name.txt"});
  expectMergeMatchesFullRead(repo, before, {"new name.txt"});

  // Discarding all of a file's lines takes its entry out of the list.
  before = fullStatus(repo);
  repo.git({"checkout", "--", "a.txt"});
  expectMergeMatchesFullRead(repo, before, {"a.txt"});
}
