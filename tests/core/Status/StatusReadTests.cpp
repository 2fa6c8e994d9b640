// The status read against real repositories.
#include <gtest/gtest.h>

#include <QFile>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRevisionChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetStagedFilesForAmendGitCommand.h"
#include "Jobs/JobProgress.h"
#include "StatusTestSupport.h"
#include "support/TempRepository.h"

namespace {

const QString nonAscii = "\u00e4rger \u65e5\u672c.txt";
const QString withNewline = "two\nlines.txt";

// The files a read gives, or its failure.
QStringList files(const GitResult<ChangedFileList>& result) {
  return result ? describe(result.value()) : QStringList{"failed: " + describe(result.error())};
}

class StatusReadTest : public ::testing::Test {
 protected:
  QStringList status(bool hideUntracked = false, bool showIgnored = false, const SubmoduleList& submodules = {}) {
    auto result = GetChangedFilesGitCommand::execute(repo.module(), submodules, hideUntracked, showIgnored);
    EXPECT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
    if (!result) return {};
    EXPECT_EQ(result.value().filesCount, static_cast<int>(result.value().changedFiles.size()));
    return describe(result.value().changedFiles);
  }

  TempRepository repo;
};

TEST_F(StatusReadTest, EveryKindOfChangeInOneWorkingTree) {
  repo.writeFile(".gitignore", "*.log\n");
  repo.writeFile("both.txt", "one\n");
  repo.writeFile("moved.txt", QByteArray("a line that makes the rename detectable\n").repeated(20));
  repo.writeFile("gone.txt", "bye\n");
  repo.writeFile("becomes-link", "plain file\n");
  repo.writeFile("dir/a b.txt", "blank\n");
  repo.commit("base");

  repo.writeFile("both.txt", "two\n");
  repo.git({"add", "both.txt"});
  repo.writeFile("both.txt", "three\n");
  repo.git({"mv", "moved.txt", "renamed.txt"});
  repo.removeFile("gone.txt");
  repo.removeFile("becomes-link");
  ASSERT_TRUE(QFile::link("both.txt", repo.path() + "/becomes-link"));
  repo.writeFile("dir/a b.txt", "changed\n");
  repo.writeFile(nonAscii, "new\n");
  repo.git({"add", nonAscii});
  repo.writeFile(withNewline, "untracked\n");
  repo.writeFile("deep/er/untracked.txt", "x\n");
  repo.writeFile("build.log", "ignored\n");

  const QStringList tracked{"unstaged changed 'becomes-link'",
                            "unstaged modified 'both.txt'",
                            "staged modified 'both.txt'"};
  const QStringList rest{"unstaged modified 'dir/a b.txt'",
                         "unstaged deleted 'gone.txt'",
                         "staged renamed 'renamed.txt' from 'moved.txt'",
                         "unstaged added '" + withNewline + "' untracked new",
                         "staged added '" + nonAscii + "'"};
  const QString deepUntracked = "unstaged added 'deep/er/untracked.txt' untracked new";
  const QString ignored = "unstaged ignored 'build.log' untracked";

  EXPECT_EQ(status(), tracked + QStringList{deepUntracked} + rest);
  QStringList withoutUntracked = tracked + rest;
  withoutUntracked.removeAll("unstaged added '" + withNewline + "' untracked new");
  EXPECT_EQ(status(true), withoutUntracked);
  EXPECT_EQ(status(false, true), (tracked + QStringList{ignored, deepUntracked} + rest));
}

TEST_F(StatusReadTest, FailuresAreValues) {
  auto missing = GetChangedFilesGitCommand::execute(GitModule{repo.path() + "/nowhere", {}, {}}, {}, false, false);
  EXPECT_TRUE(missing.isError<Error::GitWorkingDirectoryNotExists>());

  // A canceled refresh ends quietly, not with git's complaint.
  JobProgress progress;
  progress.cancel();
  EXPECT_TRUE(GetChangedFilesGitCommand::execute(repo.module(), {}, false, false, &progress).isError<Error::Canceled>());

  TempRepository plainFolder(false);
  auto notRepository = GetChangedFilesGitCommand::execute(plainFolder.module(), {}, false, false);
  ASSERT_TRUE(notRepository.isError<Error::GitUnknownError>());
  EXPECT_TRUE(notRepository.errorAs<Error::GitUnknownError>()->error.contains("not a git repository"));
}

TEST_F(StatusReadTest, FilesOfACommitAgainstItsParentTheEmptyTreeOrAnotherCommit) {
  repo.writeFile(nonAscii, "x\n");
  repo.writeFile("keep.txt", QByteArray("content to follow across a rename\n").repeated(10));
  const QString root = repo.commit("root");
  repo.git({"mv", "keep.txt", "kept.txt"});
  repo.writeFile(nonAscii, "y\n");
  const QString second = repo.commit("second");
  repo.writeFile("third.txt", "3\n");
  const QString third = repo.commit("third");

  const auto read = [&](const QString& sha, std::optional<QString> base) {
    auto result = GetRevisionChangedFilesGitCommand::executeInternal(repo.module(), sha, base, {});
    for (const auto& f : result ? result.value() : ChangedFileList()) EXPECT_EQ(f->treeIsh, sha);
    return files(result);
  };
  // git's order, byte-wise; the quoted non-ASCII name comes back as it is on disk
  EXPECT_EQ(read(root, std::nullopt), (QStringList{"unstaged added 'keep.txt'", "unstaged added '" + nonAscii + "'"}));
  EXPECT_EQ(read(second, std::nullopt),
            (QStringList{"unstaged renamed 'kept.txt' from 'keep.txt'", "unstaged modified '" + nonAscii + "'"}));
  EXPECT_EQ(read(third, root), (QStringList{"unstaged renamed 'kept.txt' from 'keep.txt'", "unstaged added 'third.txt'",
                                            "unstaged modified '" + nonAscii + "'"}));
  EXPECT_TRUE(GetRevisionChangedFilesGitCommand::executeInternal(repo.module(), "no-such-commit", std::nullopt, {})
                  .isError<Error::GitUnknownError>());
}

TEST_F(StatusReadTest, StagedFilesForAmendSeeTheIndexAgainstThePreviousCommit) {
  repo.writeFile("first.txt", "1\n");
  repo.commit("root");
  repo.writeFile("staged.txt", "s\n");
  repo.git({"add", "staged.txt"});
  repo.writeFile("unstaged.txt", "u\n");

  // The last commit is the root: everything it holds plus the index counts as added.
  auto onRoot = GetStagedFilesForAmendGitCommand::executeInternal(repo.module());
  EXPECT_EQ(files(onRoot), (QStringList{"staged added 'first.txt'", "staged added 'staged.txt'"}));
  EXPECT_EQ(onRoot.value()[0]->fileMode, "100644");

  repo.commit("second");  // takes unstaged.txt too
  repo.writeFile("first.txt", "changed\n");
  repo.git({"add", "first.txt"});
  EXPECT_EQ(files(GetStagedFilesForAmendGitCommand::executeInternal(repo.module())),
            (QStringList{"staged modified 'first.txt'", "staged added 'staged.txt'", "staged added 'unstaged.txt'"}));
}

}  // namespace
