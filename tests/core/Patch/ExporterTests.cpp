#include <gtest/gtest.h>

#include "DiffFixture.h"
#include "Models/UnifiedDiffExporter.h"
#include "support/LogCapture.h"

namespace {

XChunkPtr oneLineChunk() {
  auto sub = std::make_shared<XSubChunk>();
  sub->preContextLines = {std::make_shared<const XChangedLine>(XChangedLine{"keep\n"})};
  sub->addedLines = {std::make_shared<const XChangedLine>(XChangedLine{"new\n", true})};
  sub->noNewLineAtEndOfFileLine = std::make_shared<const XChangedLine>(XChangedLine{"No newline at end of file\n"});
  auto chunk = std::make_shared<XChunk>();
  chunk->fromStart = 3;
  chunk->fromLength = 1;
  chunk->toStart = 3;
  chunk->toLength = 2;
  chunk->contextString = " void f()";
  chunk->subChunks = {sub};
  return chunk;
}

}  // namespace

TEST(UnifiedDiffExporter, WritesTheHeaderFromTheParsedFields) {
  const QString body = "@@ -3,1 +3,2 @@\n keep\n+new\n\\ No newline at end of file\n--\n";
  XFilePatch base;
  base.oldTreeIsh = "1111111";
  base.treeIsh = "2222222";
  base.chunks = {oneLineChunk()};

  struct Row {
    const char* name;
    std::optional<QString> oldPath, newPath;
    std::optional<FileMode> oldMode, newMode;
    QString header;
  };
  const Row rows[] = {
      {"modified, both modes", "f", "f", FileMode{100644}, FileMode{100644},
       "diff --git a/f b/f\nold mode 100644\nnew mode 100644\nindex 1111111..2222222\n--- a/f\n+++ b/f\n"},
      {"created: fixed mode digits, the one mode on the index line", std::nullopt, "dir/n w", std::nullopt, FileMode{100755},
       "diff --git a/dir/n w b/dir/n w\nnew file mode 100000\nindex 1111111..2222222 100755\n--- /dev/null\n+++ b/dir/n w\n"},
      {"deleted", "d", std::nullopt, FileMode{100755}, std::nullopt,
       "diff --git a/d b/d\ndeleted file mode 100644\nindex 1111111..2222222 100755\n--- a/d\n+++ /dev/null\n"},
      {"moved, no mode", "a", "b", std::nullopt, std::nullopt, "diff --git a/a b/b\n--- a/a\n+++ b/b\n"},
      {"short mode padded", "t", "t", FileMode{40000}, std::nullopt,
       "diff --git a/t b/t\nindex 1111111..2222222 040000\n--- a/t\n+++ b/t\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    XFilePatch file = base;
    file.oldFilepath = row.oldPath;
    file.newFilepath = row.newPath;
    file.oldFileMode = row.oldMode;
    file.newFileMode = row.newMode;
    const QString text = UnifiedDiffExporter(file).text();
    EXPECT_TRUE(text.startsWith(row.header + body)) << text.toStdString();
    const auto data = UnifiedDiffExporter(file).data();
    ASSERT_TRUE(data.has_value());
    EXPECT_EQ(*data, text.toUtf8());
  }

  LogCapture log;
  const QString text = UnifiedDiffExporter(base).text();
  EXPECT_TRUE(text.startsWith("new file mode 100000\ndeleted file mode 100644\n--- /dev/null\n+++ /dev/null\n@@"));
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error),
            QStringList{"OldFileName and NewFileName in XFilePatch are not defined."});

  // A lone surrogate has no UTF-8 form: no bytes rather than a replacement character.
  XFilePatch broken = base;
  broken.newFilepath = broken.oldFilepath = QString(QChar(0xD800)) + "x";
  EXPECT_FALSE(UnifiedDiffExporter(broken).data().has_value());
}
