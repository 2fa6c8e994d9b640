#include <gtest/gtest.h>

#include "Models/FileContent/FileChangeClassifier.h"
#include "Models/FileContent/LfsPointer.h"
#include "Models/FileContent/TextDisplayDecision.h"

using namespace FileChangeClassifier;

namespace {
const QString shaA = QString(64, QLatin1Char('a'));
const QString shaB = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";

QString pointerDiff(const QString& oldSha, qint64 oldSize, const QString& newSha, qint64 newSize) {
  return QStringLiteral("diff --git a/big.bin b/big.bin\nindex 1..2 100644\n--- a/big.bin\n+++ b/big.bin\n@@ -1,3 +1,3 @@\n"
                        " version https://git-lfs.github.com/spec/v1\n-oid sha256:%1\n-size %2\n+oid sha256:%3\n+size %4\n")
      .arg(oldSha)
      .arg(oldSize)
      .arg(newSha)
      .arg(newSize);
}
}  // namespace

TEST(FileChangeClassifier, ImagesAreKnownBySuffixAlone) {
  for (const char* image : {"a.png", "dir/B.PNG", "x.jpeg", "y.JPG", "icon.ico", "anim.gif", "old.bmp"}) {
    EXPECT_TRUE(isImageFile(QString::fromUtf8(image))) << image;
  }
  for (const char* other : {"image.png.txt", "png", "photo.tiff", "notes.svg"}) EXPECT_FALSE(isImageFile(QString::fromUtf8(other))) << other;
}

TEST(FileChangeClassifier, BinaryLineCountsOnlyAtALineStartInAShortDiff) {
  const QString binary = "diff --git a/x b/x\nindex 1..2\nBinary files a/x and b/x differ\n";
  EXPECT_TRUE(isBinaryDiff(binary));
  EXPECT_FALSE(isBinaryDiff("@@ -1 +1 @@\n-text mentioning Binary files\n"));
  EXPECT_FALSE(isBinaryDiff(QString()));

  // Padded to exactly 3072 characters it still counts; one more and it isn't looked at.
  QString atLimit = binary + QString(3072 - binary.size(), QLatin1Char('x'));
  EXPECT_TRUE(isBinaryDiff(atLimit));
  EXPECT_FALSE(isBinaryDiff(atLimit + QLatin1Char('x')));
}

// Both pointers of a real change are read in WorkingDirectoryChanges.LfsFilesShowBothPointers.
TEST(FileChangeClassifier, LfsChangeNeedsExactlyOneRemovedAndOneAddedPointer) {
  // A newly added pointer has one match only; that is no LFS change.
  const QString added = QStringLiteral("@@ -0,0 +1,3 @@\n+version https://git-lfs.github.com/spec/v1\n+oid sha256:%1\n+size 5\n").arg(shaA);
  EXPECT_FALSE(findLfsChange(added).has_value());
  // Upper-case hex is no oid.
  EXPECT_FALSE(findLfsChange(pointerDiff(shaA.toUpper(), 1, shaB, 2)).has_value());

  QString longDiff = pointerDiff(shaA, 1, shaB, 2);
  longDiff += QString(3073 - longDiff.size(), QLatin1Char(' '));
  ASSERT_EQ(longDiff.size(), 3073);
  EXPECT_FALSE(findLfsChange(longDiff).has_value());
  longDiff.chop(1);
  EXPECT_TRUE(findLfsChange(longDiff).has_value());
}

TEST(FileChangeClassifier, SubmoduleDiffGivesBothShasAndTheDirtyMark) {
  const QString diff = QStringLiteral("diff --git a/lib b/lib\n--- a/lib\n+++ b/lib\n@@ -1 +1 @@\n-Subproject commit 1234567\n"
                                      "+Subproject commit 89abcde-dirty\n");
  EXPECT_EQ(parseSubmoduleDiff(diff, true), (SubmoduleShas{"1234567", "89abcde", true}));
  EXPECT_EQ(parseSubmoduleDiff(diff, false), (SubmoduleShas{"1234567", "89abcde", false}));
  // Only an added pointer (a new submodule), or the sides in the wrong order: nothing.
  EXPECT_FALSE(parseSubmoduleDiff("+Subproject commit 1234567\n", true).has_value());
  EXPECT_FALSE(parseSubmoduleDiff("+Subproject commit 1234567\n-Subproject commit 89abcde\n", true).has_value());
}

// UTF-8 text and a Latin-1 file are told apart in RevisionFileContent; here the NUL count.
TEST(FileChangeClassifier, TextMeansFewNulBytesAndValidUtf8) {
  EXPECT_TRUE(readsAsText(QByteArray("five\0\0\0\0\0nuls", 13)));
  EXPECT_FALSE(readsAsText(QByteArray("six\0\0\0\0\0\0nuls", 13)));
  // NUL bytes past the first 2000 aren't counted.
  EXPECT_TRUE(readsAsText(QByteArray(2000, 'a') + QByteArray(10, '\0')));
}

TEST(LfsPointer, ParsesThePointerFileAndWritesItBack) {
  const LfsPointer pointer{shaB, 1234567890123};
  const QString text = pointer.description();
  EXPECT_TRUE(text.startsWith("version https://git-lfs.github.com/spec/v1\noid sha256:" + shaB + "\nsize "));
  EXPECT_EQ(LfsPointer::parse(text), pointer);
  EXPECT_TRUE(LfsPointer::isPointerText(text));

  EXPECT_FALSE(LfsPointer::parse(text + "ext-0-foo sha256:00\n").has_value());  // four lines
  EXPECT_FALSE(LfsPointer::parse(QStringLiteral("version x\noid sha256:%1\nsize many\n").arg(shaA)).has_value());
  EXPECT_FALSE(LfsPointer::parse(QStringLiteral("version x\noid:sha256:%1\nsize 1\n").arg(shaA)).has_value());
  EXPECT_FALSE(LfsPointer::isPointerText("version https://git-lfs.github.com/spec/v1\noid sha256:1\n"));  // too short
}

TEST(TextDisplayDecision, LargeTextsWaitForLoadDiff) {
  EXPECT_FALSE(TextDisplayDecision::exceedsLimit(1048576, false));
  EXPECT_TRUE(TextDisplayDecision::exceedsLimit(1048577, false));
  EXPECT_FALSE(TextDisplayDecision::exceedsLimit(1048577, true));

  const QString small = "diff --git a/f b/f\nindex 1111111..2222222 100644\n--- a/f\n+++ b/f\n@@ -1 +1 @@\n-a\n+b\n";
  const auto rendered = TextDisplayDecision::forDiff(small, "f", XFilePatch::Location::unstaged, false);
  ASSERT_EQ(rendered.kind, TextDisplayDecision::Kind::render);
  ASSERT_TRUE(rendered.patch);
  EXPECT_EQ(rendered.patch->changedLinesCount(), 2);

  constexpr int lines = 17000;  // 62 characters each: just over the limit
  QString large = QStringLiteral("diff --git a/f b/f\nindex 1111111..2222222 100644\n--- a/f\n+++ b/f\n@@ -0,0 +1,%1 @@\n").arg(lines);
  for (int i = 0; i < lines; ++i) large += "+" + QString(60, QLatin1Char('x')) + QLatin1Char('\n');
  ASSERT_GT(large.size(), TextDisplayDecision::largeTextLimit);
  EXPECT_EQ(TextDisplayDecision::forDiff(large, "f", XFilePatch::Location::staged, false).kind,
            TextDisplayDecision::Kind::tooLarge);
  EXPECT_EQ(TextDisplayDecision::forDiff(large, "f", XFilePatch::Location::staged, true).kind, TextDisplayDecision::Kind::render);

  EXPECT_FALSE(TextDisplayDecision::notLfsTip(499999).has_value());
  EXPECT_EQ(TextDisplayDecision::notLfsTip(1200000), "File is 1.2 MB and is not managed by LFS");
}
