#include <gtest/gtest.h>

#include "FileChangesTestSupport.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Git/Commands/WorkingDirectory/MergeConflictsResolved.h"

using Command = GetWorkingDirectoryFileChangesGitCommand;

namespace {
QByteArray numberedLines(int count, int changedLine = -1) {
  QByteArray text;
  for (int i = 1; i <= count; ++i) text += (i == changedLine ? QByteArray("changed ") : QByteArray("line ")) + QByteArray::number(i) + '\n';
  return text;
}

QString diffText(const GitResult<DiffFileContentPtr>& result) {
  const auto text = contentAs<TextDiffFileContent>(result);
  return text ? text->diffString : QStringLiteral("<not a text diff>");
}
}  // namespace

TEST(WorkingDirectoryChanges, TextDiffsOfUntrackedRenamedAndNonAsciiFiles) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("old name.txt"), numberedLines(5), QStringLiteral("Base"));
  repo.writeFile(QStringLiteral("na\u00EFve new.txt"), "fresh\n");
  repo.git({QStringLiteral("mv"), QStringLiteral("old name.txt"), QStringLiteral("new name.txt")});

  const auto untracked = statusEntry(repo, QStringLiteral("na\u00EFve new.txt"), false);
  ASSERT_TRUE(untracked);
  const QString untrackedDiff = diffText(Command::execute(repo.module(), untracked, false, {}));
  EXPECT_TRUE(untrackedDiff.contains(QStringLiteral("new file mode"))) << untrackedDiff.toStdString();
  EXPECT_TRUE(untrackedDiff.contains(QStringLiteral("+++ b/na\u00EFve new.txt"))) << untrackedDiff.toStdString();
  EXPECT_TRUE(untrackedDiff.contains(QStringLiteral("+fresh\n")));

  const auto renamed = statusEntry(repo, QStringLiteral("new name.txt"), true);
  ASSERT_TRUE(renamed);
  ASSERT_EQ(renamed->oldPath, QStringLiteral("old name.txt"));
  const QString renameDiff = diffText(Command::execute(repo.module(), renamed, false, {}));
  EXPECT_TRUE(renameDiff.contains(QStringLiteral("rename from old name.txt\nrename to new name.txt"))) << renameDiff.toStdString();
}

TEST(WorkingDirectoryChanges, ContextWhitespaceAndWholeFileSettingsShapeTheDiff) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("f.txt"), numberedLines(40), QStringLiteral("Base"));
  QByteArray edited = numberedLines(40, 20);
  edited.replace("line 30\n", "line   30\n");  // whitespace only
  repo.writeFile(QStringLiteral("f.txt"), edited);
  const auto file = statusEntry(repo, QStringLiteral("f.txt"), false);
  ASSERT_TRUE(file);

  const QString zeroContext = diffText(Command::execute(repo.module(), file, false, DiffSettings{0, false, false}));
  EXPECT_TRUE(zeroContext.contains(QStringLiteral("@@ -19,3 +19,3 @@"))) << zeroContext.toStdString();  // raised to one line
  const QString ignoring = diffText(Command::execute(repo.module(), file, false, DiffSettings{1, true, false}));
  EXPECT_FALSE(ignoring.contains(QStringLiteral("line   30")));
  EXPECT_TRUE(ignoring.contains(QStringLiteral("+changed 20")));
  const QString whole = diffText(Command::execute(repo.module(), file, false, DiffSettings{3, false, true}));
  EXPECT_TRUE(whole.contains(QStringLiteral("@@ -1,40 +1,40 @@"))) << whole.toStdString();
}

TEST(WorkingDirectoryChanges, AmendComparesWithTheParentOrTheEmptyTree) {
  TempRepository repo;
  repo.writeFile(QStringLiteral("a.txt"), "first\n");
  repo.writeFile(QStringLiteral("pic.png"), binaryBytes(64, 'p'));
  repo.commit(QStringLiteral("Root"));
  // Amending the root commit: HEAD^ doesn't exist, the whole file is new.
  EXPECT_EQ(Command::amendBaseTree(repo.module()), QStringLiteral("4b825dc642cb6eb9a060e54bf8d69288fbee4904"));
  auto staged = std::make_shared<ChangedFile>(std::nullopt, QStringLiteral("a.txt"), ChangeType::added, true, true, false);
  const QString rootDiff = diffText(Command::execute(repo.module(), staged, true, {}));
  EXPECT_TRUE(rootDiff.contains(QStringLiteral("--- /dev/null"))) << rootDiff.toStdString();
  EXPECT_TRUE(rootDiff.contains(QStringLiteral("+first")));
  auto image = std::make_shared<ChangedFile>(std::nullopt, QStringLiteral("pic.png"), ChangeType::added, true, true, false);
  const auto rootImage = contentAs<BinaryDiffFileContent>(Command::execute(repo.module(), image, true, {}));
  ASSERT_TRUE(rootImage);
  EXPECT_FALSE(rootImage->old.has_value());
  EXPECT_EQ(rootImage->new_, binaryBytes(64, 'p'));

  repo.commitFile(QStringLiteral("a.txt"), "first\nsecond\n", QStringLiteral("Second"));
  EXPECT_EQ(Command::amendBaseTree(repo.module()), QStringLiteral("HEAD^"));
  repo.writeFile(QStringLiteral("a.txt"), "first\nsecond\nthird\n");
  repo.stageAll();
  staged->changeType = ChangeType::modified;
  // The commit being amended and the staged change together, against its parent.
  const QString amendDiff = diffText(Command::execute(repo.module(), staged, true, {}));
  EXPECT_TRUE(amendDiff.contains(QStringLiteral("+second\n+third\n"))) << amendDiff.toStdString();
  const QString plainDiff = diffText(Command::execute(repo.module(), staged, false, {}));
  EXPECT_FALSE(plainDiff.contains(QStringLiteral("+second")));
}

TEST(WorkingDirectoryChanges, UnknownBinariesGiveTheirSizes) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("data.bin"), binaryBytes(100, 'a'), QStringLiteral("Base"));
  repo.writeFile(QStringLiteral("data.bin"), binaryBytes(250, 'b'));
  repo.writeFile(QStringLiteral("new.bin"), binaryBytes(70, 'c'));

  const auto unstaged = contentAs<UnknownBinaryFileContent>(
      Command::execute(repo.module(), statusEntry(repo, QStringLiteral("data.bin"), false), false, {}));
  ASSERT_TRUE(unstaged);
  EXPECT_EQ(unstaged->oldSize, 100);
  EXPECT_EQ(unstaged->newSize, 250);

  const auto untracked = contentAs<UnknownBinaryFileContent>(
      Command::execute(repo.module(), statusEntry(repo, QStringLiteral("new.bin"), false), false, {}));
  ASSERT_TRUE(untracked);
  EXPECT_FALSE(untracked->oldSize.has_value());
  EXPECT_EQ(untracked->newSize, 70);

  repo.stageAll();
  repo.writeFile(QStringLiteral("data.bin"), binaryBytes(300, 'd'));  // the work tree moved on; the index side counts
  const auto staged = contentAs<UnknownBinaryFileContent>(
      Command::execute(repo.module(), statusEntry(repo, QStringLiteral("data.bin"), true), false, {}));
  ASSERT_TRUE(staged);
  EXPECT_EQ(staged->oldSize, 100);
  EXPECT_EQ(staged->newSize, 250);
}

TEST(WorkingDirectoryChanges, ImagesGiveBothSidesFromIndexHeadAndWorkTree) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("logo.PNG"), binaryBytes(80, 'x'), QStringLiteral("Base"));
  repo.writeFile(QStringLiteral("logo.PNG"), binaryBytes(90, 'y'));
  repo.git({QStringLiteral("add"), QStringLiteral("logo.PNG")});
  repo.writeFile(QStringLiteral("logo.PNG"), binaryBytes(95, 'z'));

  const auto unstaged = contentAs<BinaryDiffFileContent>(
      Command::execute(repo.module(), statusEntry(repo, QStringLiteral("logo.PNG"), false), false, {}));
  ASSERT_TRUE(unstaged);
  EXPECT_EQ(unstaged->old, binaryBytes(90, 'y'));  // the index, before HEAD
  EXPECT_EQ(unstaged->new_, binaryBytes(95, 'z'));
  const auto staged = contentAs<BinaryDiffFileContent>(
      Command::execute(repo.module(), statusEntry(repo, QStringLiteral("logo.PNG"), true), false, {}));
  ASSERT_TRUE(staged);
  EXPECT_EQ(staged->old, binaryBytes(80, 'x'));
  EXPECT_EQ(staged->new_, binaryBytes(90, 'y'));

  EXPECT_EQ(Command::getFileContent(repo.module(), QStringLiteral("logo.PNG"), Command::head), binaryBytes(80, 'x'));
  EXPECT_FALSE(Command::getFileContent(repo.module(), QStringLiteral("logo.PNG"), 3).has_value());
  EXPECT_FALSE(Command::getFileContent(repo.module(), QStringLiteral("missing.png"), Command::workingCopy).has_value());
}

TEST(WorkingDirectoryChanges, LfsFilesShowBothPointers) {
  TempRepository repo;
  useLfs(repo, QStringLiteral("*.psd"));
  useLfs(repo, QStringLiteral("*.png"));
  const QByteArray before = binaryBytes(2000, 'm');
  const QByteArray after = binaryBytes(3000, 'n');
  repo.writeFile(QStringLiteral("art/cover.psd"), before);
  repo.writeFile(QStringLiteral("art/cover.png"), before);
  repo.commit(QStringLiteral("Art"));
  repo.writeFile(QStringLiteral("art/cover.psd"), after);
  repo.writeFile(QStringLiteral("art/cover.png"), after);

  for (const QString& path : {QStringLiteral("art/cover.psd"), QStringLiteral("art/cover.png")}) {
    const auto lfs = contentAs<LfsFileContent>(Command::execute(repo.module(), statusEntry(repo, path, false), false, {}));
    ASSERT_TRUE(lfs) << path.toStdString();
    EXPECT_EQ(lfs->old, (LfsPointer{sha256(before), before.size()}));
    EXPECT_EQ(lfs->current, (LfsPointer{sha256(after), after.size()}));
    EXPECT_EQ(lfs->isImage, path.endsWith(QStringLiteral(".png")));
  }

  // A new LFS image has one pointer only: the image route reads the index side as a pointer.
  repo.writeFile(QStringLiteral("art/new.png"), after);
  repo.git({QStringLiteral("add"), QStringLiteral("art/new.png")});
  const auto added = contentAs<LfsFileContent>(Command::execute(repo.module(), statusEntry(repo, QStringLiteral("art/new.png"), true), false, {}));
  ASSERT_TRUE(added);
  EXPECT_FALSE(added->old.has_value());
  EXPECT_EQ(added->current, (LfsPointer{sha256(after), after.size()}));
  EXPECT_TRUE(added->isImage);
}

TEST(MergeConflictsResolved, BlocksFilesThatStillHoldMarkers) {
  TempRepository repo;
  repo.writeFile(QStringLiteral("both.txt"), "base\n");
  repo.writeFile(QStringLiteral("gone.txt"), "base\n");
  repo.commit(QStringLiteral("Base"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("topic")});
  repo.writeFile(QStringLiteral("both.txt"), "topic\n");
  repo.removeFile(QStringLiteral("gone.txt"));
  repo.commit(QStringLiteral("Topic"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.writeFile(QStringLiteral("both.txt"), "main\n");
  repo.writeFile(QStringLiteral("gone.txt"), "main\n");
  repo.commit(QStringLiteral("Main"));
  repo.git({QStringLiteral("merge"), QStringLiteral("topic")}, true);

  const auto both = statusEntry(repo, QStringLiteral("both.txt"), false);
  const auto gone = statusEntry(repo, QStringLiteral("gone.txt"), false);
  ASSERT_TRUE(both && gone);
  ASSERT_EQ(both->changeType, ChangeType::unmerged);
  // Deleted on one side: git prints "* Unmerged path", which holds nothing to judge.
  EXPECT_TRUE(testMergeConflictsResolved(repo.module(), {gone}, {}));
  EXPECT_FALSE(testMergeConflictsResolved(repo.module(), {gone, both}, {}));

  repo.writeFile(QStringLiteral("both.txt"), "main and topic\n");
  EXPECT_TRUE(testMergeConflictsResolved(repo.module(), {gone, both}, {}));
}
