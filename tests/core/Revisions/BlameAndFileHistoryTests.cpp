// Blame, the history of one file and the tree of a commit, read from real repositories.
#include <gtest/gtest.h>

#include "Git/Commands/Revision/GetBlameGitCommand.h"
#include "Git/Commands/Revision/GetFileHistoryGitCommand.h"
#include "Git/Commands/Revision/GetTreeItemsGitCommand.h"
#include "support/TempRepository.h"

namespace {

// The test environment names the author for every commit; --author still wins.
void commitAs(TempRepository& repo, const QString& author, const QString& message) {
  repo.git({"commit", "-q", "-a", "--author=" + author + " <" + author.toLower() + "@example.org>", "-m", message});
}

// One file across a rename to a non-ASCII name: Ada writes four lines, Ben changes the
// second and fourth, Cy renames it and Ada adds a fifth; an unrelated commit on the way and
// a file beside it at the end.
class FileHistoryRepository : public ::testing::Test {
 protected:
  void SetUp() override {
    repo.writeFile("dir/öld name.txt", "one\ntwo\nthree\nfour\n");
    repo.git({"add", "."});
    commitAs(repo, "Ada", "Create");
    first = repo.headSha();
    repo.commitFile("other.txt", "x\n", "Unrelated");
    repo.writeFile("dir/öld name.txt", "one\nTWO\nthree\nFOUR\n");
    commitAs(repo, "Ben", "Shout two and four");
    second = repo.headSha();
    repo.git({"mv", "dir/öld name.txt", "dir/nëw name.txt"});
    commitAs(repo, "Cy", "Rename");
    repo.writeFile("dir/nëw name.txt", "one\nTWO\nthree\nFOUR\nfive\n");
    commitAs(repo, "Ada", "Grow again");
    fifth = repo.headSha();
    repo.commitFile("dir/sub/c.txt", "c\n", "Beside it");
  }

  TempRepository repo;
  QString first, second, fifth;
};

TEST_F(FileHistoryRepository, BlameOfInterleavedAuthorsAcrossARenameSharesOneInfoPerCommit) {
  const auto result = GetBlameGitCommand::execute(repo.module(), "HEAD", "dir/nëw name.txt");
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  const BlameChunkList& chunks = result.value();
  ASSERT_EQ(chunks.size(), 5u);
  const QStringList expected = {first, second, first, second, fifth};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(chunks[i].lineNumber, i + 1);
    EXPECT_EQ(chunks[i].lineCount, 1);
    EXPECT_EQ(chunks[i].revisionInfo->sha, expected[i]) << i;
  }
  // The rename does not own the lines, and both runs of a commit share its info.
  EXPECT_EQ(chunks[0].revisionInfo, chunks[2].revisionInfo);
  EXPECT_EQ(chunks[1].revisionInfo, chunks[3].revisionInfo);
  EXPECT_EQ(chunks[0].revisionInfo->author, "Ada");
  EXPECT_EQ(chunks[1].revisionInfo->message, "Shout two and four");
  EXPECT_FALSE(chunks[1].revisionInfo->authorMail.contains('<'));
  EXPECT_TRUE(chunks[1].revisionInfo->authorDate.isValid());

  // Each commit names its parent and the file's name there (quoted by git, as it
  // is not ASCII), so the blame before a change follows the rename back.
  EXPECT_FALSE(chunks[0].revisionInfo->previous.has_value());
  ASSERT_TRUE(chunks[1].revisionInfo->previous.has_value());
  EXPECT_EQ(*chunks[1].revisionInfo->previous, (BlameArgs{repo.git({"rev-parse", second + "~1"}).trimmed(), "dir/öld name.txt"}));
  const BlameArgs& before = *chunks[1].revisionInfo->previous;
  const auto older = GetBlameGitCommand::execute(repo.module(), before.sha, before.filepath);
  ASSERT_TRUE(older.isSuccess());
  ASSERT_EQ(older.value().size(), 1u);
  EXPECT_EQ(older.value()[0].lineCount, 4);

  EXPECT_TRUE(GetBlameGitCommand::execute(repo.module(), "HEAD", "missing.txt").isFailure());
}

TEST(Blame, BrokenOutputIsAFailureNotAGuess) {
  const QString sha(40, 'a');
  struct Case {
    const char* name;
    QString output;
    bool parses;
  };
  const Case cases[] = {
      {"empty file", "", true},
      {"not a header", "hello world\n", false},
      {"header without its line", sha + " 1 1 1\nauthor A\nsummary s\n", false},
      {"a later line of a group never opened", sha + " 1 1\n\tx\n", false},
      {"one line", sha + " 1 1 1\nauthor A\nauthor-mail <a@x>\nauthor-time 5\nsummary s\nfilename f\n\tx\n", true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(GetBlameGitCommand::parse(c.output).isSuccess(), c.parses) << c.name;
  }
  EXPECT_TRUE(GetBlameGitCommand::parse("hello world\n").isError<Error::CannotParse>());
}

QStringList subjects(const std::vector<RevisionWithFiles>& entries) {
  QStringList result;
  for (const auto& entry : entries) result << entry.revision->message();
  return result;
}

TEST_F(FileHistoryRepository, FileHistoryFollowsTheFileBackPastItsRename) {
  const auto result = GetFileHistoryGitCommand::execute(repo.module(), "dir/nëw name.txt");
  ASSERT_TRUE(result.isSuccess());
  EXPECT_EQ(subjects(result.value()), (QStringList{"Grow again", "Rename", "Shout two and four", "Create"}));
  const auto& rename = result.value()[1].changedFiles;
  ASSERT_EQ(rename.size(), 1u);
  EXPECT_EQ(rename[0]->changeType, ChangeType::renamed);
  EXPECT_EQ(rename[0]->oldPath, "dir/öld name.txt");
  EXPECT_EQ(rename[0]->path, "dir/nëw name.txt");
  EXPECT_EQ(result.value()[3].changedFiles.at(0)->path, "dir/öld name.txt");
  // Revisions of one author share one identity.
  EXPECT_EQ(result.value()[0].revision->authorIdentity(), result.value()[3].revision->authorIdentity());

  // A folder's history is everything under it, each commit with its files there.
  const auto folder = GetFileHistoryGitCommand::execute(repo.module(), "dir/");
  ASSERT_TRUE(folder.isSuccess());
  EXPECT_EQ(subjects(folder.value()), (QStringList{"Beside it", "Grow again", "Rename", "Shout two and four", "Create"}));
  EXPECT_EQ(folder.value()[0].changedFiles.at(0)->path, "dir/sub/c.txt");
  EXPECT_EQ(folder.value()[2].changedFiles.at(0)->changeType, ChangeType::renamed);

  // A limiting revision narrows it.
  const auto limited = GetFileHistoryGitCommand::execute(repo.module(), "dir/nëw name.txt", "HEAD~2");
  ASSERT_TRUE(limited.isSuccess());
  EXPECT_EQ(limited.value().size(), 3u);
  EXPECT_TRUE(GetFileHistoryGitCommand::execute(repo.module(), "dir/nëw name.txt", "no-such-branch").isFailure());
}

// "path/" for a folder, "path@sha" for a submodule's commit.
QStringList shape(const GitResult<std::vector<FileTreeItem>>& items) {
  QStringList result;
  for (const FileTreeItem& item : items.value()) {
    const bool folder = item.itemType == FileTreeItemType::directory;
    result << item.filePath + (folder ? "/" : item.itemType == FileTreeItemType::revision ? "@" + item.treeSha : "");
  }
  return result;
}

TEST(FileTree, FoldersOpenOneAtATimeAndASubmoduleIsACommit) {
  TempRepository inner(true, "inner");
  inner.commitFile("lib.c", "int x;\n", "Library");
  TempRepository repo;
  repo.commitFile("src/deep/main.c", "int main;\n", "Code");
  repo.git({"-c", "protocol.file.allow=always", "submodule", "add", "-q", inner.path(), "vendor/lib"});
  repo.commit("Add the library");

  const auto top = GetTreeItemsGitCommand::execute(repo.module(), repo.headSha(), "");
  ASSERT_TRUE(top.isSuccess());
  EXPECT_EQ(shape(top), (QStringList{".gitmodules", "src/", "vendor/"}));
  EXPECT_EQ(shape(GetTreeItemsGitCommand::execute(repo.module(), top.value()[2].treeSha, "vendor")),
            QStringList{"vendor/lib@" + inner.headSha()});
  const auto src = GetTreeItemsGitCommand::execute(repo.module(), top.value()[1].treeSha, "src");
  EXPECT_EQ(shape(src), QStringList{"src/deep/"});
  EXPECT_EQ(src.value()[0].fileName, "deep");
  EXPECT_TRUE(GetTreeItemsGitCommand::execute(repo.module(), QString(40, 'e'), "").isFailure());
}

}  // namespace
