#include <gtest/gtest.h>

#include "FileChangesTestSupport.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileContentGitCommand.h"
#include "Git/Process/Task.h"
#include "Jobs/CancelationToken.h"
#include "Models/FileContent/BinaryContent.h"
#include "Models/FileContent/ImageContent.h"
#include "Models/FileContent/LfsContent.h"
#include "Models/FileContent/TextContent.h"

using Command = GetRevisionFileChangesGitCommand;

namespace {
ChangedFilePtr entry(const QString& path, ChangeType type = ChangeType::modified, std::optional<QString> oldPath = std::nullopt) {
  return std::make_shared<ChangedFile>(std::move(oldPath), path, type, false, true, false);
}
}  // namespace

TEST(RevisionChanges, RootCommitFallsBackToTheEmptyTreeAndPairsCompareTwoCommits) {
  TempRepository repo;
  const QString root = repo.commitFile(QStringLiteral("f.txt"), "one\n", QStringLiteral("Root"));
  const QString second = repo.commitFile(QStringLiteral("f.txt"), "one\ntwo\n", QStringLiteral("Second"));
  const QString third = repo.commitFile(QStringLiteral("f.txt"), "one\ntwo\nthree\n", QStringLiteral("Third"));

  const auto rootDiff = contentAs<TextDiffFileContent>(Command::execute(repo.module(), root, std::nullopt, entry(QStringLiteral("f.txt"), ChangeType::added), {}));
  ASSERT_TRUE(rootDiff);
  EXPECT_TRUE(rootDiff->diffString.contains(QStringLiteral("new file mode")));
  EXPECT_TRUE(rootDiff->diffString.contains(QStringLiteral("+one\n")));

  const auto parentDiff = contentAs<TextDiffFileContent>(Command::execute(repo.module(), third, std::nullopt, entry(QStringLiteral("f.txt")), {}));
  ASSERT_TRUE(parentDiff);
  EXPECT_TRUE(parentDiff->diffString.contains(QStringLiteral(" two\n+three\n"))) << parentDiff->diffString.toStdString();
  EXPECT_FALSE(parentDiff->diffString.contains(QStringLiteral("+two")));

  const auto pairDiff = contentAs<TextDiffFileContent>(Command::execute(repo.module(), third, root, entry(QStringLiteral("f.txt")), {}));
  ASSERT_TRUE(pairDiff);
  EXPECT_TRUE(pairDiff->diffString.contains(QStringLiteral("+two\n+three\n")));
  Q_UNUSED(second);

  // A commit that doesn't exist is a failure, not a fall-back.
  EXPECT_TRUE(Command::execute(repo.module(), QString(40, QLatin1Char('e')), std::nullopt, entry(QStringLiteral("f.txt")), {}).isFailure());
}

TEST(RevisionChanges, RenamesAreFollowedAndWhitespaceIgnoredAsASpaceChange) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("before.txt"), "alpha beta\ngamma\ndelta\nepsilon\n", QStringLiteral("Base"));
  repo.git({QStringLiteral("mv"), QStringLiteral("before.txt"), QStringLiteral("after.txt")});
  repo.writeFile(QStringLiteral("after.txt"), "alpha   beta\ngamma\ndelta\nepsilon\nzeta\n");
  const QString sha = repo.commit(QStringLiteral("Rename"));

  const auto file = entry(QStringLiteral("after.txt"), ChangeType::renamed, QStringLiteral("before.txt"));
  const auto diff = contentAs<TextDiffFileContent>(Command::execute(repo.module(), sha, std::nullopt, file, DiffSettings{3, true, false}));
  ASSERT_TRUE(diff);
  EXPECT_TRUE(diff->diffString.contains(QStringLiteral("rename from before.txt"))) << diff->diffString.toStdString();
  EXPECT_TRUE(diff->diffString.contains(QStringLiteral("+zeta")));
  EXPECT_FALSE(diff->diffString.contains(QStringLiteral("+alpha")));
}

TEST(RevisionChanges, CanceledBeforeTheRunStartsNothing) {
  TempRepository repo;
  const QString sha = repo.commitFile(QStringLiteral("f.txt"), "x\n", QStringLiteral("Only"));
  CancelationToken token;
  token.cancel();
  const long before = Task::launchCount.load();
  EXPECT_TRUE(Command::execute(repo.module(), sha, std::nullopt, entry(QStringLiteral("f.txt")), {}, &token).isError<Error::Canceled>());
  EXPECT_EQ(Task::launchCount.load(), before);
}

TEST(RevisionChanges, BinariesImagesAndLfsFilesOfACommit) {
  TempRepository repo;
  useLfs(repo, QStringLiteral("*.psd"));
  const QByteArray layersV1 = binaryBytes(4000, 'l');
  const QByteArray layersV2 = binaryBytes(5000, 'k');
  repo.writeFile(QStringLiteral("blob.bin"), binaryBytes(10, 'a'));
  repo.writeFile(QStringLiteral("icon.png"), binaryBytes(20, 'i'));
  repo.writeFile(QStringLiteral("layers.psd"), layersV1);
  const QString root = repo.commit(QStringLiteral("Root"));
  repo.writeFile(QStringLiteral("blob.bin"), binaryBytes(11, 'b'));
  repo.writeFile(QStringLiteral("icon.png"), binaryBytes(21, 'j'));
  repo.writeFile(QStringLiteral("layers.psd"), layersV2);
  const QString second = repo.commit(QStringLiteral("Second"));

  const auto sizes = contentAs<UnknownBinaryFileContent>(Command::execute(repo.module(), second, std::nullopt, entry(QStringLiteral("blob.bin")), {}));
  ASSERT_TRUE(sizes);
  EXPECT_EQ(sizes->oldSize, 10);
  EXPECT_EQ(sizes->newSize, 11);

  const auto image = contentAs<BinaryDiffFileContent>(Command::execute(repo.module(), second, std::nullopt, entry(QStringLiteral("icon.png")), {}));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->old, binaryBytes(20, 'i'));
  EXPECT_EQ(image->new_, binaryBytes(21, 'j'));
  // The root commit's image has no old side: created.
  const auto created = contentAs<BinaryDiffFileContent>(Command::execute(repo.module(), root, std::nullopt, entry(QStringLiteral("icon.png"), ChangeType::added), {}));
  ASSERT_TRUE(created);
  EXPECT_FALSE(created->old.has_value());
  EXPECT_EQ(created->new_, binaryBytes(20, 'i'));

  const auto lfs = contentAs<LfsFileContent>(Command::execute(repo.module(), second, std::nullopt, entry(QStringLiteral("layers.psd")), {}));
  ASSERT_TRUE(lfs);
  EXPECT_EQ(lfs->old, (LfsPointer{sha256(layersV1), layersV1.size()}));
  EXPECT_EQ(lfs->current, (LfsPointer{sha256(layersV2), layersV2.size()}));
  EXPECT_FALSE(lfs->isImage);
}

TEST(RevisionFileContent, TellsTextBinaryImagesAndPointersApart) {
  TempRepository repo;
  useLfs(repo, QStringLiteral("*.psd"));
  repo.writeFile(QStringLiteral("readme.md"), "# T\u00EFtle\n");
  repo.writeFile(QStringLiteral("latin1.txt"), "caf\xE9\n");
  repo.writeFile(QStringLiteral("photo.jpg"), binaryBytes(300, 'p'));
  repo.writeFile(QStringLiteral("layers.psd"), binaryBytes(700, 'q'));
  const QString sha = repo.commit(QStringLiteral("Files"));

  const auto text = GetRevisionFileContentGitCommand::execute(repo.module(), sha, QStringLiteral("readme.md"));
  ASSERT_TRUE(text.isSuccess());
  ASSERT_EQ(text.value()->kind(), Content::Kind::text);
  EXPECT_EQ(static_cast<const TextContent&>(*text.value()).string, QStringLiteral("# T\u00EFtle\n"));

  const auto latin1 = GetRevisionFileContentGitCommand::execute(repo.module(), sha, QStringLiteral("latin1.txt"));
  ASSERT_EQ(latin1.value()->kind(), Content::Kind::binary);
  EXPECT_EQ(static_cast<const BinaryContent&>(*latin1.value()).size, 5);

  const auto photo = GetRevisionFileContentGitCommand::execute(repo.module(), sha, QStringLiteral("photo.jpg"));
  ASSERT_EQ(photo.value()->kind(), Content::Kind::image);
  EXPECT_EQ(static_cast<const ImageContent&>(*photo.value()).data, binaryBytes(300, 'p'));

  const auto pointer = GetRevisionFileContentGitCommand::execute(repo.module(), sha, QStringLiteral("layers.psd"));
  ASSERT_EQ(pointer.value()->kind(), Content::Kind::lfs);
  const auto& lfs = static_cast<const LfsContent&>(*pointer.value());
  EXPECT_EQ(lfs.lfsPointer, (LfsPointer{sha256(binaryBytes(700, 'q')), 700}));
  EXPECT_EQ(lfs.size, 700);
  EXPECT_FALSE(lfs.isImage);

  EXPECT_TRUE(GetRevisionFileContentGitCommand::execute(repo.module(), sha, QStringLiteral("missing.txt")).isFailure());
}
