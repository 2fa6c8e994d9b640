// Lines of `diff --name-status` and of the raw diff-index form, as git prints them.
#include <gtest/gtest.h>

#include "Extensions/GitQuotedPath.h"
#include "StatusTestSupport.h"
#include "support/LogCapture.h"

namespace {

TEST(DiffLineTest, NameStatusAndRawLines) {
  struct Row {
    const char* line;
    const char* expected;
  };
  const Row rows[] = {
      {"M\tsrc/main.cpp", "unstaged modified 'src/main.cpp'"},
      {"R087\told name.txt\tnew name.txt", "unstaged renamed 'new name.txt' from 'old name.txt'"},
      {"C100\ta\tb", "unstaged copied 'b' from 'a'"},
      {"T\tlink", "unstaged changed 'link'"},
      {"U\tconflict", "unstaged unmerged 'conflict'"},
      {"X\tweird", "unstaged unknown 'weird'"},
      {"D\t\"\\303\\244 b.txt\"", "unstaged deleted '\xc3\xa4 b.txt'"},
      {":100644 100755 1111111111111111111111111111111111111111 2222222222222222222222222222222222222222 M\trun.sh",
       "unstaged modified 'run.sh'"},
      {":100644 100644 1111111111111111111111111111111111111111 1111111111111111111111111111111111111111 R100\ta\tb",
       "unstaged renamed 'b' from 'a'"},
  };
  for (const Row& row : rows) {
    const auto file = ChangedFile::fromDiffLine(QString::fromUtf8(row.line));
    ASSERT_TRUE(file.has_value()) << row.line;
    EXPECT_EQ(describe(*file), QString::fromUtf8(row.expected)) << row.line;
  }
  // The raw form's mode and the commit a file belongs to are read from real output in StatusReadTests.
  EXPECT_FALSE(ChangedFile::fromDiffLine(QStringLiteral("M\tpath"))->fileMode.has_value());
}

TEST(DiffLineTest, LineWithoutATabIsLoggedAndDropped) {
  LogCapture log;
  EXPECT_FALSE(ChangedFile::fromDiffLine(QStringLiteral("M path")).has_value());
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error), QStringList{QStringLiteral("Cannot parse filepath in 'M path'")});
}

TEST(GitQuotedPathTest, UnquotesCStyleNames) {
  struct Row {
    const char* quoted;
    const char* expected;
  };
  const Row rows[] = {
      {"plain name.txt", "plain name.txt"},
      {"\"tab\\there\"", "tab\there"},
      {"\"new\\nline\"", "new\nline"},
      {"\"say \\\"hi\\\"\"", "say \"hi\""},
      {"\"back\\\\slash\"", "back\\slash"},
      {"\"\\346\\227\\245\\346\\234\\254\"", "\xe6\x97\xa5\xe6\x9c\xac"},
      {"\"\\a\\b\\v\\f\\r\"", "\a\b\v\f\r"},
      {"\"odd \\q escape\"", "odd \\q escape"},  // kept as it stands rather than lost
      {"\"", "\""},                              // a lone quote is a name, not a quoting
  };
  for (const Row& row : rows) {
    EXPECT_EQ(GitQuotedPath::unquote(QString::fromUtf8(row.quoted)), QString::fromUtf8(row.expected)) << row.quoted;
  }
}

}  // namespace
