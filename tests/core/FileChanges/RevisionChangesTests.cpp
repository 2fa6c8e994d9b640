#include <gtest/gtest.h>

#include "FileChangesTestSupport.h"
#include "support/LogCapture.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileContentGitCommand.h"
#include "Git/Process/Task.h"
#include "Jobs/CancelationToken.h"
#include "Models/FileContent/BinaryContent.h"
#include "Models/FileContent/ImageContent.h"
#include "Models/FileContent/LfsContent.h"
#include "Models/FileContent/TextContent.h"

namespace {
ChangedFilePtr entry(const QString& path, ChangeType type = ChangeType::modified, std::optional<QString> oldPath = std::nullopt) {
  return std::make_shared<ChangedFile>(std::move(oldPath), path, type, false, true, false);
}

// A file's change in a commit, against its parent or against `base`.
GitResult<DiffFileContentPtr> change(const TempRepository& repo, const QString& sha, const ChangedFilePtr& file,
                                     std::optional<QString> base = std::nullopt, DiffSettings settings = {},
                                     CancelationToken* token = nullptr) {
  return GetRevisionFileChangesGitCommand::execute(repo.module(), sha, std::move(base), file, settings, token);
}
}  // namespace

TEST(RevisionChanges, RootCommitFallsBackToTheEmptyTreeAndPairsCompareTwoCommits) {
  TempRepository repo;
  const QString root = repo.commitFile("f.txt", "one\n", "Root");
  repo.commitFile("f.txt", "one\ntwo\n", "Second");
  const QString third = repo.commitFile("f.txt", "one\ntwo\nthree\n", "Third");

  LogCapture log;
  const QString rootDiff = diffText(change(repo, root, entry("f.txt", ChangeType::added)));
  EXPECT_EQ(log.messages(), QStringList()) << "the fall-back is no error";
  EXPECT_TRUE(rootDiff.contains("new file mode"));
  EXPECT_TRUE(rootDiff.contains("+one\n"));
  const QString parentDiff = diffText(change(repo, third, entry("f.txt")));
  EXPECT_TRUE(parentDiff.contains(" two\n+three\n")) << parentDiff.toStdString();
  EXPECT_FALSE(parentDiff.contains("+two"));
  EXPECT_TRUE(diffText(change(repo, third, entry("f.txt"), root)).contains("+two\n+three\n"));
  // A commit that doesn't exist is a failure, not a fall-back.
  EXPECT_TRUE(change(repo, QString(40, 'e'), entry("f.txt")).isFailure());
  EXPECT_EQ(log.messages().size(), 1);
}

TEST(RevisionChanges, RenamesAreFollowedAndWhitespaceIgnoredAsASpaceChange) {
  TempRepository repo;
  repo.commitFile("before.txt", "alpha beta\ngamma\ndelta\nepsilon\n", "Base");
  repo.git({"mv", "before.txt", "after.txt"});
  repo.writeFile("after.txt", "alpha   beta\ngamma\ndelta\nepsilon\nzeta\n");
  const QString sha = repo.commit("Rename");

  const QString diff =
      diffText(change(repo, sha, entry("after.txt", ChangeType::renamed, "before.txt"), {}, DiffSettings{3, true, false}));
  EXPECT_TRUE(diff.contains("rename from before.txt")) << diff.toStdString();
  EXPECT_TRUE(diff.contains("+zeta"));
  EXPECT_FALSE(diff.contains("+alpha"));
}

TEST(RevisionChanges, CanceledBeforeTheRunStartsNothing) {
  TempRepository repo;
  const QString sha = repo.commitFile("f.txt", "x\n", "Only");
  CancelationToken token;
  token.cancel();
  const long before = Task::launchCount.load();
  EXPECT_TRUE(change(repo, sha, entry("f.txt"), {}, {}, &token).isError<Error::Canceled>());
  EXPECT_EQ(Task::launchCount.load(), before);
}

TEST(RevisionChanges, BinariesImagesAndLfsFilesOfACommit) {
  TempRepository repo;
  useLfs(repo, "*.psd");
  const QByteArray layersV1 = binaryBytes(4000, 'l');
  const QByteArray layersV2 = binaryBytes(5000, 'k');
  repo.writeFile("blob.bin", binaryBytes(10, 'a'));
  repo.writeFile("icon.png", binaryBytes(20, 'i'));
  repo.writeFile("layers.psd", layersV1);
  const QString root = repo.commit("Root");
  repo.writeFile("blob.bin", binaryBytes(11, 'b'));
  repo.writeFile("icon.png", binaryBytes(21, 'j'));
  repo.writeFile("layers.psd", layersV2);
  const QString second = repo.commit("Second");

  EXPECT_EQ(sizesOf(change(repo, second, entry("blob.bin"))), (Sizes{10, 11}));
  EXPECT_EQ(imagesOf(change(repo, second, entry("icon.png"))), (Images{binaryBytes(20, 'i'), binaryBytes(21, 'j')}));
  // The root commit's image has no old side: created.
  EXPECT_EQ(imagesOf(change(repo, root, entry("icon.png", ChangeType::added))), (Images{std::nullopt, binaryBytes(20, 'i')}));
  EXPECT_EQ(pointersOf(change(repo, second, entry("layers.psd"))), (Pointers{pointerOf(layersV1), pointerOf(layersV2), false}));
}

TEST(RevisionFileContent, TellsTextBinaryImagesAndPointersApart) {
  TempRepository repo;
  useLfs(repo, "*.psd");
  repo.writeFile("readme.md", "# T\u00EFtle\n");
  repo.writeFile("latin1.txt", "caf\xE9\n");
  repo.writeFile("photo.jpg", binaryBytes(300, 'p'));
  repo.writeFile("layers.psd", binaryBytes(700, 'q'));
  const QString sha = repo.commit("Files");
  const auto content = [&](const char* path) { return GetRevisionFileContentGitCommand::execute(repo.module(), sha, path); };

  const auto text = content("readme.md");
  ASSERT_TRUE(text.isSuccess());
  ASSERT_EQ(text.value()->kind(), Content::Kind::text);
  EXPECT_EQ(static_cast<const TextContent&>(*text.value()).string, "# T\u00EFtle\n");
  const auto latin1 = content("latin1.txt");
  ASSERT_EQ(latin1.value()->kind(), Content::Kind::binary);
  EXPECT_EQ(static_cast<const BinaryContent&>(*latin1.value()).size, 5);
  const auto photo = content("photo.jpg");
  ASSERT_EQ(photo.value()->kind(), Content::Kind::image);
  EXPECT_EQ(static_cast<const ImageContent&>(*photo.value()).data, binaryBytes(300, 'p'));
  const auto pointer = content("layers.psd");
  ASSERT_EQ(pointer.value()->kind(), Content::Kind::lfs);
  const auto& lfs = static_cast<const LfsContent&>(*pointer.value());
  EXPECT_EQ(lfs.lfsPointer, pointerOf(binaryBytes(700, 'q')));
  EXPECT_EQ(lfs.size, 700);
  EXPECT_FALSE(lfs.isImage);
  EXPECT_TRUE(content("missing.txt").isFailure());
}
