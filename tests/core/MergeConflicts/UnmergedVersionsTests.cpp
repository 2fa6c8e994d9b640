#include <gtest/gtest.h>

#include <QDir>

#include "support/Conflicts.h"
#include "Git/Commands/Merge/CheckoutUnmergedFileGitCommand.h"
#include "Git/Commands/Merge/ResolveMergeConflictGitCommand.h"


// Each stage lands next to the file under its suffix, with the stage's bytes.
TEST(CheckoutUnmergedFile, VersionsNextToTheFile) {
  TempRepository repo;
  const QString path = "sub dir/ü.txt";
  makeConflict(repo, path, {QByteArray("base\n"), QByteArray("local\n"), QByteArray("remote\n")});
  const UnmergedFile file = unmerged(repo, path);
  const struct {
    UnmergedFileVersionType version;
    const char* suffix;
    QByteArray content;
  } cases[] = {
      {UnmergedFileVersionType::base, ".~BASE", "base\n"},
      {UnmergedFileVersionType::local, ".~LOCAL", "local\n"},
      {UnmergedFileVersionType::remote, ".~REMOTE", "remote\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.suffix);
    const auto written = CheckoutUnmergedFileGitCommand::execute(repo.module(), file, c.version);
    ASSERT_TRUE(written.isSuccess());
    EXPECT_EQ(written.value(), path + QString::fromLatin1(c.suffix));
    EXPECT_EQ(repo.readFile(written.value()), c.content);
  }
  // No stray temporary file of git's is left in the root.
  EXPECT_TRUE(QDir(repo.path()).entryList({".merge_file_*"}, QDir::Files | QDir::Hidden).isEmpty());
  EXPECT_EQ(CheckoutUnmergedFileGitCommand::parseTemporaryName(".merge_file_a\tpath\twith tab\n"), ".merge_file_a");
  EXPECT_FALSE(CheckoutUnmergedFileGitCommand::parseTemporaryName("no tab"));
}

// Both sides added the file: there is no base stage to write.
TEST(CheckoutUnmergedFile, AddedOnBothSidesHasNoBase) {
  TempRepository repo;
  makeConflict(repo, "f", {std::nullopt, QByteArray("a\n"), QByteArray("b\n")});
  const UnmergedFile file = unmerged(repo, "f");
  EXPECT_FALSE(file.baseVersion);
  EXPECT_TRUE(CheckoutUnmergedFileGitCommand::execute(repo.module(), file, UnmergedFileVersionType::base).isFailure());
  EXPECT_FALSE(QFile::exists(repo.path() + "/f.~BASE"));
}

TEST(ResolveMergeConflict, WritesUtf8AndStages) {
  TempRepository repo;
  const QString path = "a b.txt";
  makeConflict(repo, path, {QByteArray("x\n"), QByteArray("y\n"), QByteArray("z\n")});
  ASSERT_TRUE(ResolveMergeConflictGitCommand::execute(repo.module(), path, "ÿ merged\nno newline").isSuccess());
  EXPECT_EQ(repo.readFile(path), QByteArray("\xc3\xbf merged\nno newline"));
  EXPECT_EQ(repo.git({"ls-files", "--unmerged"}), QString());
  EXPECT_EQ(repo.gitBytes({"show", ":" + path}), QByteArray("\xc3\xbf merged\nno newline"));
}
