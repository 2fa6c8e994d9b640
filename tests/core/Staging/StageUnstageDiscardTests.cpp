#include <gtest/gtest.h>

#include <QFileInfo>

#include "Git/Commands/WorkingDirectory/DiscardFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/UnstageFilesGitCommand.h"
#include "StagingTestSupport.h"

namespace {
const QString spaced = "dir with space/na\u00EFve file.txt";
const QString japanese = "\u65E5\u672C\u8A9E.txt";
}  // namespace

TEST(StageFiles, StagesUnusualPathsAndIgnoredFilesButNotDirectoryEntriesAndReportsGitsError) {
  TempRepository repo;
  repo.commitFile(".gitignore", "*.log\n", "Ignore logs");
  repo.writeFile(spaced, "1\n");
  repo.writeFile(japanese, "2\n");
  repo.writeFile("debug.log", "ignored\n");
  repo.writeFile("folder/inside.txt", "3\n");

  const GitVoidResult result = StageFilesGitCommand::execute(
      repo.module(), {changedFile(spaced, ChangeType::added, false, true), changedFile(japanese, ChangeType::added, false, true),
                      changedFile("debug.log", ChangeType::ignored, false), changedFile("folder", ChangeType::added, false, true, true)});
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(stagedPaths(repo), (QStringList{"debug.log", spaced, japanese}));
  EXPECT_EQ(untrackedPaths(repo), QStringList{"folder/inside.txt"});

  const GitVoidResult failed = StageFilesGitCommand::execute(repo.module(), {changedFile("missing.txt", ChangeType::added, false, true)});
  ASSERT_TRUE(failed.isError<Error::GitUnknownError>());
  EXPECT_TRUE(failed.errorAs<Error::GitUnknownError>()->error.contains("missing.txt"));
}

TEST(UnstageFiles, AddedFilesBecomeUntrackedOthersReturnToTheWorkTree) {
  TempRepository repo;
  repo.commitFile("kept.txt", "old\n", "Base");
  repo.commitFile("before.txt", "moved\n", "Rename source");
  repo.writeFile("kept.txt", "new\n");
  repo.writeFile(spaced, "brand new\n");
  repo.git({"mv", "before.txt", "after.txt"});
  repo.stageAll();
  repo.writeFile("folder/x.txt", "x\n");

  const std::vector<ChangedFilePtr> files{
      changedFile("kept.txt", ChangeType::modified, true),
      changedFile(spaced, ChangeType::added, true),
      changedFile("after.txt", ChangeType::renamed, true, false, false, "before.txt"),
      changedFile("kept.txt", ChangeType::modified, false),         // the unstaged side: not counted
      changedFile("folder", ChangeType::added, true, false, true),  // a directory entry: skipped
  };
  ASSERT_TRUE(UnstageFilesGitCommand::execute(repo.module(), files).isSuccess());

  EXPECT_TRUE(stagedPaths(repo).isEmpty()) << stagedPaths(repo).join(QLatin1Char(',')).toStdString();
  EXPECT_EQ(modifiedPaths(repo), (QStringList{"before.txt", "kept.txt"}));
  EXPECT_EQ(untrackedPaths(repo), (QStringList{"after.txt", spaced, "folder/x.txt"}));
  EXPECT_EQ(repo.readFile(spaced), QByteArray("brand new\n"));
  EXPECT_EQ(repo.readFile("kept.txt"), QByteArray("new\n"));
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
  repo.commitFile(spaced, "to delete\n", "Spaced");
  repo.commitFile("partly.txt", "one\n", "Partly");
  repo.removeFile(spaced);
  repo.writeFile("partly.txt", "two\n");
  repo.git({"add", "partly.txt"});
  repo.writeFile("partly.txt", "three\n");

  // A plain edit goes back as in BatchLimits; here a deletion, and an edit over a staged one.
  ASSERT_TRUE(DiscardFilesGitCommand::execute(repo.module(), {changedFile(spaced, ChangeType::deleted, false),
                                                              changedFile("partly.txt", ChangeType::modified, false)})
                  .isSuccess());
  EXPECT_EQ(repo.readFile(spaced), QByteArray("to delete\n"));
  EXPECT_EQ(repo.readFile("partly.txt"), QByteArray("two\n"));  // back to the staged version
  EXPECT_TRUE(modifiedPaths(repo).isEmpty());

  repo.writeFile(japanese, "new\n");
  repo.writeFile("new folder/deep/file.bin", "x");
  LaunchCounter launches;
  ASSERT_TRUE(DiscardFilesGitCommand::execute(repo.module(), {changedFile(japanese, ChangeType::added, false, true),
                                                              changedFile("new folder", ChangeType::added, false, true, true)})
                  .isSuccess());
  EXPECT_EQ(launches.count(), 0);
  EXPECT_FALSE(QFileInfo::exists(repo.path() + QLatin1Char('/') + japanese));
  EXPECT_FALSE(QFileInfo::exists(repo.path() + "/new folder"));
}

TEST(DiscardFiles, ReportsAFileThatCannotBeDeletedAndStillDeletesTheOthers) {
  TempRepository repo;
  repo.writeFile("first.txt", "1\n");
  repo.writeFile("last.txt", "2\n");
  const GitVoidResult result =
      DiscardFilesGitCommand::execute(repo.module(), {changedFile("first.txt", ChangeType::added, false, true),
                                                      changedFile("vanished.txt", ChangeType::added, false, true),
                                                      changedFile("last.txt", ChangeType::added, false, true)});
  ASSERT_TRUE(result.isError<Error::Generic>());
  const QString text = result.errorAs<Error::Generic>()->text;
  EXPECT_TRUE(text.startsWith(QStringLiteral("Cannot delete the file 'file://%1/vanished.txt'. Message: ").arg(repo.path())))
      << text.toStdString();
  EXPECT_FALSE(QFileInfo::exists(repo.path() + "/first.txt"));
  EXPECT_FALSE(QFileInfo::exists(repo.path() + "/last.txt"));
}
