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
                 .arg(file->staged ? QStringLiteral("S") : QStringLiteral("W"))
                 .arg(file->oldPath ? *file->oldPath + QStringLiteral(" -> ") : QString())
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
  repo.commitFile(QStringLiteral("a.txt"), "a\nb\n", QStringLiteral("base"));
  repo.commitFile(QStringLiteral("a1.txt"), "x\n", QStringLiteral("a1"));
  repo.commitFile(QStringLiteral("a[1].txt"), "y\n", QStringLiteral("brackets"));
  repo.commitFile(QStringLiteral("old name.txt"), "moved\n", QStringLiteral("to move"));
  repo.writeFile(QStringLiteral("a.txt"), "a\nb\nc\n");
  repo.writeFile(QStringLiteral("a1.txt"), "x2\n");
  repo.writeFile(QStringLiteral("untracked.txt"), "u\n");
  repo.git({QStringLiteral("mv"), QStringLiteral("old name.txt"), QStringLiteral("new name.txt")});
  repo.writeFile(QStringLiteral("new name.txt"), "moved\nand changed\n");

  // Part of a.txt staged: its entry now stands on both sides.
  ChangedFileList before = fullStatus(repo);
  repo.git({QStringLiteral("add"), QStringLiteral("a.txt")});
  repo.writeFile(QStringLiteral("a.txt"), "a\nb\nc\nd\n");
  expectMergeMatchesFullRead(repo, before, {QStringLiteral("a.txt")});

  // A path with pattern characters is a name: "a[1].txt" doesn't read a1.txt.
  before = fullStatus(repo);
  repo.writeFile(QStringLiteral("a[1].txt"), "y2\n");
  expectMergeMatchesFullRead(repo, before, {QStringLiteral("a[1].txt")});
  const auto literal = GetPathsStatusGitCommand::execute(repo.module(), {QStringLiteral("a[1].txt")}, {}, false, false);
  ASSERT_TRUE(literal);
  EXPECT_EQ(describe(literal.value()), QStringList{QStringLiteral("W a[1].txt modified")});

  // The moved file's change is staged: the read covers both of its paths.
  before = fullStatus(repo);
  repo.git({QStringLiteral("add"), QStringLiteral("new name.txt")});
  expectMergeMatchesFullRead(repo, before, {QStringLiteral("new name.txt")});

  // Discarding all of a file's lines takes its entry out of the list.
  before = fullStatus(repo);
  repo.git({QStringLiteral("checkout"), QStringLiteral("--"), QStringLiteral("a.txt")});
  expectMergeMatchesFullRead(repo, before, {QStringLiteral("a.txt")});
}
