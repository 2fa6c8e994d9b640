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
}  // namespace

TEST(WorkingDirectoryChanges, TextDiffsOfUntrackedRenamedAndNonAsciiFiles) {
  TempRepository repo;
  repo.commitFile("old name.txt", numberedLines(5), "Base");
  repo.writeFile("na\u00EFve new.txt", "fresh\n");
  repo.git({"mv", "old name.txt", "new name.txt"});

  const QString untrackedDiff = diffText(workingChange(repo, "na\u00EFve new.txt", false));
  EXPECT_TRUE(untrackedDiff.contains("new file mode")) << untrackedDiff.toStdString();
  EXPECT_TRUE(untrackedDiff.contains("+++ b/na\u00EFve new.txt")) << untrackedDiff.toStdString();
  EXPECT_TRUE(untrackedDiff.contains("+fresh\n"));

  const QString renameDiff = diffText(workingChange(repo, "new name.txt", true));
  EXPECT_TRUE(renameDiff.contains("rename from old name.txt\nrename to new name.txt")) << renameDiff.toStdString();
}

TEST(WorkingDirectoryChanges, ContextWhitespaceAndWholeFileSettingsShapeTheDiff) {
  TempRepository repo;
  repo.commitFile("f.txt", numberedLines(40), "Base");
  QByteArray edited = numberedLines(40, 20);
  edited.replace("line 30\n", "line   30\n");  // whitespace only
  repo.writeFile("f.txt", edited);

  const QString zeroContext = diffText(workingChange(repo, "f.txt", false, DiffSettings{0, false, false}));
  EXPECT_TRUE(zeroContext.contains("@@ -19,3 +19,3 @@")) << zeroContext.toStdString();  // raised to one line
  const QString ignoring = diffText(workingChange(repo, "f.txt", false, DiffSettings{1, true, false}));
  EXPECT_FALSE(ignoring.contains("line   30"));
  EXPECT_TRUE(ignoring.contains("+changed 20"));
  const QString whole = diffText(workingChange(repo, "f.txt", false, DiffSettings{3, false, true}));
  EXPECT_TRUE(whole.contains("@@ -1,40 +1,40 @@")) << whole.toStdString();
}

TEST(WorkingDirectoryChanges, AmendComparesWithTheParentOrTheEmptyTree) {
  TempRepository repo;
  repo.writeFile("a.txt", "first\n");
  repo.writeFile("pic.png", binaryBytes(64, 'p'));
  repo.commit("Root");
  // Amending the root commit: HEAD^ doesn't exist, the whole file is new.
  EXPECT_EQ(Command::amendBaseTree(repo.module()), "4b825dc642cb6eb9a060e54bf8d69288fbee4904");
  auto staged = std::make_shared<ChangedFile>(std::nullopt, "a.txt", ChangeType::added, true, true, false);
  const QString rootDiff = diffText(Command::execute(repo.module(), staged, true, {}));
  EXPECT_TRUE(rootDiff.contains("--- /dev/null")) << rootDiff.toStdString();
  EXPECT_TRUE(rootDiff.contains("+first"));
  auto image = std::make_shared<ChangedFile>(std::nullopt, "pic.png", ChangeType::added, true, true, false);
  EXPECT_EQ(imagesOf(Command::execute(repo.module(), image, true, {})), (Images{std::nullopt, binaryBytes(64, 'p')}));

  repo.commitFile("a.txt", "first\nsecond\n", "Second");
  EXPECT_EQ(Command::amendBaseTree(repo.module()), "HEAD^");
  repo.writeFile("a.txt", "first\nsecond\nthird\n");
  repo.stageAll();
  staged->changeType = ChangeType::modified;
  // The commit being amended and the staged change together, against its parent.
  const QString amendDiff = diffText(Command::execute(repo.module(), staged, true, {}));
  EXPECT_TRUE(amendDiff.contains("+second\n+third\n")) << amendDiff.toStdString();
  const QString plainDiff = diffText(Command::execute(repo.module(), staged, false, {}));
  EXPECT_FALSE(plainDiff.contains("+second"));
}

TEST(WorkingDirectoryChanges, UnknownBinariesGiveTheirSizesAndImagesTheirBytes) {
  TempRepository repo;
  repo.writeFile("data.bin", binaryBytes(100, 'a'));
  repo.writeFile("logo.PNG", binaryBytes(80, 'x'));
  repo.commit("Base");
  repo.writeFile("data.bin", binaryBytes(250, 'b'));
  repo.writeFile("new.bin", binaryBytes(70, 'c'));
  repo.writeFile("logo.PNG", binaryBytes(90, 'y'));
  repo.git({"add", "logo.PNG"});
  repo.writeFile("logo.PNG", binaryBytes(95, 'z'));

  EXPECT_EQ(sizesOf(workingChange(repo, "data.bin", false)), (Sizes{100, 250}));
  EXPECT_EQ(sizesOf(workingChange(repo, "new.bin", false)), (Sizes{std::nullopt, 70}));
  // The unstaged image's older side is the index, not HEAD.
  EXPECT_EQ(imagesOf(workingChange(repo, "logo.PNG", false)), (Images{binaryBytes(90, 'y'), binaryBytes(95, 'z')}));
  EXPECT_EQ(imagesOf(workingChange(repo, "logo.PNG", true)), (Images{binaryBytes(80, 'x'), binaryBytes(90, 'y')}));
  repo.stageAll();
  repo.writeFile("data.bin", binaryBytes(300, 'd'));  // the work tree moved on; the index side counts
  EXPECT_EQ(sizesOf(workingChange(repo, "data.bin", true)), (Sizes{100, 250}));

  EXPECT_EQ(Command::getFileContent(repo.module(), "logo.PNG", Command::head), binaryBytes(80, 'x'));
  EXPECT_FALSE(Command::getFileContent(repo.module(), "logo.PNG", 3).has_value());
  EXPECT_FALSE(Command::getFileContent(repo.module(), "missing.png", Command::workingCopy).has_value());
}

TEST(WorkingDirectoryChanges, LfsFilesShowBothPointers) {
  TempRepository repo;
  useLfs(repo, "*.psd");
  useLfs(repo, "*.png");
  const QByteArray before = binaryBytes(2000, 'm');
  const QByteArray after = binaryBytes(3000, 'n');
  repo.writeFile("art/cover.psd", before);
  repo.writeFile("art/cover.png", before);
  repo.commit("Art");
  repo.writeFile("art/cover.psd", after);
  repo.writeFile("art/cover.png", after);
  EXPECT_EQ(pointersOf(workingChange(repo, "art/cover.psd", false)), (Pointers{pointerOf(before), pointerOf(after), false}));
  EXPECT_EQ(pointersOf(workingChange(repo, "art/cover.png", false)), (Pointers{pointerOf(before), pointerOf(after), true}));

  // A new LFS image has one pointer only: the image route reads the index side as a pointer.
  repo.writeFile("art/new.png", after);
  repo.git({"add", "art/new.png"});
  EXPECT_EQ(pointersOf(workingChange(repo, "art/new.png", true)), (Pointers{std::nullopt, pointerOf(after), true}));
}

TEST(MergeConflictsResolved, BlocksFilesThatStillHoldMarkers) {
  TempRepository repo;
  repo.writeFile("both.txt", "base\n");
  repo.writeFile("gone.txt", "base\n");
  repo.commit("Base");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.writeFile("both.txt", "topic\n");
  repo.removeFile("gone.txt");
  repo.commit("Topic");
  repo.git({"checkout", "-q", "main"});
  repo.writeFile("both.txt", "main\n");
  repo.writeFile("gone.txt", "main\n");
  repo.commit("Main");
  repo.git({"merge", "topic"}, true);

  const auto both = statusEntry(repo, "both.txt", false);
  const auto gone = statusEntry(repo, "gone.txt", false);
  ASSERT_TRUE(both && gone);
  ASSERT_EQ(both->changeType, ChangeType::unmerged);
  // Deleted on one side: git prints "* Unmerged path", which holds nothing to judge.
  EXPECT_TRUE(testMergeConflictsResolved(repo.module(), {gone}, {}));
  EXPECT_FALSE(testMergeConflictsResolved(repo.module(), {gone, both}, {}));

  repo.writeFile("both.txt", "main and topic\n");
  EXPECT_TRUE(testMergeConflictsResolved(repo.module(), {gone, both}, {}));
}
