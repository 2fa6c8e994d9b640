#include <gtest/gtest.h>

#include "Git/Commands/WorkingDirectory/DiscardFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/UnstageFilesGitCommand.h"
#include "StagingTestSupport.h"

// 4,500 paths (with blanks and non-ASCII) go through every command in batches, and
// every path arrives: nothing is lost at a batch boundary.
TEST(BatchLimits, LongListsAreSplitAndEveryPathArrives) {
  constexpr int count = 4500;
  TempRepository repo;
  repo.commitFile("README", "r\n", "Base");
  QStringList paths;
  std::vector<ChangedFilePtr> untracked, stagedAdded, stagedModified, unstagedModified;
  for (int i = 0; i < count; ++i) {
    const QString path = QStringLiteral("many files/f\u00FC %1.txt").arg(i, 4, 10, QLatin1Char('0'));
    paths << path;
    repo.writeFile(path, QByteArray::number(i) + '\n');
    untracked.push_back(changedFile(path, ChangeType::added, false, true));
    stagedAdded.push_back(changedFile(path, ChangeType::added, true));
    stagedModified.push_back(changedFile(path, ChangeType::modified, true));
    unstagedModified.push_back(changedFile(path, ChangeType::modified, false));
  }
  paths.sort();

  LaunchCounter stage;
  ASSERT_TRUE(StageFilesGitCommand::execute(repo.module(), untracked).isSuccess());
  EXPECT_EQ(stage.count(), 2);  // 4000 + 500
  EXPECT_EQ(stagedPaths(repo), paths);

  LaunchCounter unstageAdded;
  ASSERT_TRUE(UnstageFilesGitCommand::execute(repo.module(), stagedAdded).isSuccess());
  EXPECT_EQ(unstageAdded.count(), 2);
  EXPECT_TRUE(stagedPaths(repo).isEmpty());
  EXPECT_EQ(untrackedPaths(repo), paths);

  repo.commit("Many files");
  for (int i = 0; i < count; ++i) repo.writeFile(paths.at(i), "changed\n");
  repo.stageAll();
  LaunchCounter unstageModified;
  ASSERT_TRUE(UnstageFilesGitCommand::execute(repo.module(), stagedModified).isSuccess());
  EXPECT_EQ(unstageModified.count(), 2);
  EXPECT_TRUE(stagedPaths(repo).isEmpty());
  EXPECT_EQ(modifiedPaths(repo), paths);

  LaunchCounter discard;
  ASSERT_TRUE(DiscardFilesGitCommand::execute(repo.module(), unstagedModified).isSuccess());
  EXPECT_EQ(discard.count(), 5);  // 1000 a run
  EXPECT_TRUE(modifiedPaths(repo).isEmpty());
  EXPECT_EQ(repo.readFile(paths.at(4321)), QByteArray::number(4321) + '\n');
}
