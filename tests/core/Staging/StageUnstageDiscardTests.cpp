#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "Git/Commands/WorkingDirectory/DiscardFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/UnstageFilesGitCommand.h"
#include "StagingTestSupport.h"

namespace {
const QString spaced = QStringLiteral("dir with space/na\u00EFve file.txt");
const QString japanese = QStringLiteral("\u65E5\u672C\u8A9E.txt");
}  // namespace

TEST(StageFiles, StagesUnusualPathsAndIgnoredFilesButNotDirectoryEntries) {
  TempRepository repo;
  repo.commitFile(QStringLiteral(".gitignore"), "*.log\n", QStringLiteral("Ignore logs"));
  repo.writeFile(spaced, "1\n");
  repo.writeFile(japanese, "2\n");
  repo.writeFile(QStringLiteral("debug.log"), "ignored\n");
  repo.writeFile(QStringLiteral("folder/inside.txt"), "3\n");

  const std::vector<ChangedFilePtr> files{
      changedFile(spaced, ChangeType::added, false, true),
      changedFile(japanese, ChangeType::added, false, true),
      changedFile(QStringLiteral("debug.log"), ChangeType::ignored, false),
      changedFile(QStringLiteral("folder"), ChangeType::added, false, true, true),
  };
  const GitVoidResult result = StageFilesGitCommand::execute(repo.module(), files);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(stagedPaths(repo), (QStringList{QStringLiteral("debug.log"), spaced, japanese}));
  EXPECT_EQ(untrackedPaths(repo), QStringList{QStringLiteral("folder/inside.txt")});
}

TEST(StageFiles, FailureStopsTheRunAndReportsGitsError) {
  TempRepository repo;
  repo.writeFile(QStringLiteral("a.txt"), "a\n");
  const GitVoidResult result = StageFilesGitCommand::execute(
      repo.module(), {changedFile(QStringLiteral("missing.txt"), ChangeType::added, false, true),
                      changedFile(QStringLiteral("a.txt"), ChangeType::added, false, true)});
  ASSERT_TRUE(result.isError<Error::GitUnknownError>());
  EXPECT_TRUE(result.errorAs<Error::GitUnknownError>()->error.contains(QStringLiteral("missing.txt")));
}

TEST(UnstageFiles, AddedFilesBecomeUntrackedOthersReturnToTheWorkTree) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("kept.txt"), "old\n", QStringLiteral("Base"));
  repo.commitFile(QStringLiteral("before.txt"), "moved\n", QStringLiteral("Rename source"));
  repo.writeFile(QStringLiteral("kept.txt"), "new\n");
  repo.writeFile(spaced, "brand new\n");
  repo.git({QStringLiteral("mv"), QStringLiteral("before.txt"), QStringLiteral("after.txt")});
  repo.stageAll();
  repo.writeFile(QStringLiteral("folder/x.txt"), "x\n");

  const std::vector<ChangedFilePtr> files{
      changedFile(QStringLiteral("kept.txt"), ChangeType::modified, true),
      changedFile(spaced, ChangeType::added, true),
      changedFile(QStringLiteral("after.txt"), ChangeType::renamed, true, false, false, QStringLiteral("before.txt")),
      changedFile(QStringLiteral("kept.txt"), ChangeType::modified, false),       // the unstaged side: not counted
      changedFile(QStringLiteral("folder"), ChangeType::added, true, false, true),  // a directory entry: skipped
  };
  ASSERT_TRUE(UnstageFilesGitCommand::execute(repo.module(), files).isSuccess());

  EXPECT_TRUE(stagedPaths(repo).isEmpty()) << stagedPaths(repo).join(QLatin1Char(',')).toStdString();
  EXPECT_EQ(modifiedPaths(repo), (QStringList{QStringLiteral("before.txt"), QStringLiteral("kept.txt")}));
  EXPECT_EQ(untrackedPaths(repo), (QStringList{QStringLiteral("after.txt"), spaced, QStringLiteral("folder/x.txt")}));
  EXPECT_EQ(repo.readFile(spaced), QByteArray("brand new\n"));
  EXPECT_EQ(repo.readFile(QStringLiteral("kept.txt")), QByteArray("new\n"));
}

TEST(UnstageFiles, WorksBeforeTheFirstCommitAndDoesNothingForAnEmptyList) {
  TempRepository repo;
  repo.writeFile(japanese, "x\n");
  repo.stageAll();

  LaunchCounter none;
  EXPECT_TRUE(UnstageFilesGitCommand::execute(repo.module(), {}).isSuccess());
  EXPECT_TRUE(UnstageFilesGitCommand::execute(repo.module(), {changedFile(japanese, ChangeType::added, false, true)}).isSuccess());
  EXPECT_EQ(none.count(), 0);

  ASSERT_TRUE(UnstageFilesGitCommand::execute(repo.module(), {changedFile(japanese, ChangeType::added, true)}).isSuccess());
  EXPECT_TRUE(stagedPaths(repo).isEmpty());
  EXPECT_EQ(untrackedPaths(repo), QStringList{japanese});
}

TEST(DiscardFiles, RestoresTrackedFilesFromTheIndexAndDeletesNewOnesWithoutGit) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("modified.txt"), "committed\n", QStringLiteral("Base"));
  repo.commitFile(spaced, "to delete\n", QStringLiteral("Spaced"));
  repo.commitFile(QStringLiteral("partly.txt"), "one\n", QStringLiteral("Partly"));
  repo.writeFile(QStringLiteral("modified.txt"), "edited\n");
  repo.removeFile(spaced);
  repo.writeFile(QStringLiteral("partly.txt"), "two\n");
  repo.git({QStringLiteral("add"), QStringLiteral("partly.txt")});
  repo.writeFile(QStringLiteral("partly.txt"), "three\n");

  ASSERT_TRUE(DiscardFilesGitCommand::execute(repo.module(), {changedFile(QStringLiteral("modified.txt"), ChangeType::modified, false),
                                                              changedFile(spaced, ChangeType::deleted, false),
                                                              changedFile(QStringLiteral("partly.txt"), ChangeType::modified, false)})
                  .isSuccess());
  EXPECT_EQ(repo.readFile(QStringLiteral("modified.txt")), QByteArray("committed\n"));
  EXPECT_EQ(repo.readFile(spaced), QByteArray("to delete\n"));
  EXPECT_EQ(repo.readFile(QStringLiteral("partly.txt")), QByteArray("two\n"));  // back to the staged version
  EXPECT_TRUE(modifiedPaths(repo).isEmpty());

  repo.writeFile(japanese, "new\n");
  repo.writeFile(QStringLiteral("new folder/deep/file.bin"), "x");
  LaunchCounter launches;
  ASSERT_TRUE(DiscardFilesGitCommand::execute(repo.module(), {changedFile(japanese, ChangeType::added, false, true),
                                                              changedFile(QStringLiteral("new folder"), ChangeType::added, false, true, true)})
                  .isSuccess());
  EXPECT_EQ(launches.count(), 0);
  EXPECT_FALSE(QFileInfo::exists(repo.path() + QLatin1Char('/') + japanese));
  EXPECT_FALSE(QFileInfo::exists(repo.path() + QStringLiteral("/new folder")));
}

TEST(DiscardFiles, ReportsAFileThatCannotBeDeletedAndStillDeletesTheOthers) {
  TempRepository repo;
  repo.writeFile(QStringLiteral("first.txt"), "1\n");
  repo.writeFile(QStringLiteral("last.txt"), "2\n");
  const GitVoidResult result = DiscardFilesGitCommand::execute(
      repo.module(), {changedFile(QStringLiteral("first.txt"), ChangeType::added, false, true),
                      changedFile(QStringLiteral("vanished.txt"), ChangeType::added, false, true),
                      changedFile(QStringLiteral("last.txt"), ChangeType::added, false, true)});
  ASSERT_TRUE(result.isError<Error::Generic>());
  const QString text = result.errorAs<Error::Generic>()->text;
  EXPECT_TRUE(text.startsWith(QStringLiteral("Cannot delete the file 'file://%1/vanished.txt'. Message: ").arg(repo.path())))
      << text.toStdString();
  EXPECT_FALSE(QFileInfo::exists(repo.path() + QStringLiteral("/first.txt")));
  EXPECT_FALSE(QFileInfo::exists(repo.path() + QStringLiteral("/last.txt")));
}
