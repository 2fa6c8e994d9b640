// Records and their changed-file lines, as the history reads of a file print them.
#include <gtest/gtest.h>

#include "../References/ReferencesTestSupport.h"
#include "Git/Commands/Revision/RevisionParser.h"

namespace {

TEST(RevisionParserTest, ReadChangedFileTable) {
  struct Row {
    const char* name;
    QString line;
    ChangeType type;
    std::optional<QString> oldPath;
    QString path;
  };
  const std::vector<Row> rows = {
      {"modified", "M\tsrc/a.cpp", ChangeType::modified, std::nullopt, "src/a.cpp"},
      {"deleted", "D\tgone", ChangeType::deleted, std::nullopt, "gone"},
      {"copied with score", "C075\tfrom\tto", ChangeType::copied, "from", "to"},
      {"type change", "T\tlink", ChangeType::typeChanged, std::nullopt, "link"},
      {"unmerged", "U\tboth", ChangeType::unmerged, std::nullopt, "both"},
      {"unknown letter", "X\tweird", ChangeType::unknown, std::nullopt, "weird"},
      {"empty status", "\tno-status", ChangeType::unknown, std::nullopt, "no-status"},
      {"four fields", "R100\ta\tb\tc", ChangeType::renamed, std::nullopt, "a"},
      {"blank in path", "A\twith blank ", ChangeType::added, std::nullopt, "with blank "},
      {"quoted path", "M\t\"say \\\"hi\\\".txt\"", ChangeType::modified, std::nullopt, "say \"hi\".txt"},
      {"quoted rename", "R090\t\"tab\\there\"\tplain", ChangeType::renamed, "tab\there", "plain"},
  };
  for (const Row& row : rows) {
    auto file = RevisionParser::readChangedFile(row.line);
    ASSERT_TRUE(file) << row.name;
    EXPECT_EQ(file->changeType, row.type) << row.name;
    EXPECT_EQ(file->oldPath, row.oldPath) << row.name;
    EXPECT_EQ(file->path, row.path) << row.name;
  }
  LogCapture log;
  EXPECT_FALSE(RevisionParser::readChangedFile("M no tab"));
  EXPECT_TRUE(log.contains("Cannot parse filepath in 'M no tab'"));
}

TEST(RevisionParserTest, BadAndShortRecords) {
  const QString sha = "0123456789abcdef0123456789abcdef01234567";
  RevisionParser parser;
  LogCapture log;
  {  // A bad date gives nothing and moves past the record.
    const QStringList lines{sha, sha, "", "n", "e", "noon", "s", sha, sha, sha, "n", "e", "5", "next"};
    qsizetype index = 0;
    EXPECT_FALSE(parser.parseRevision(lines, index));
    EXPECT_EQ(index, 7);
    EXPECT_TRUE(log.contains("Cannot parse author date in 'noon'"));
    auto next = parser.parseRevision(lines, index);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->message(), "next");
    EXPECT_EQ(next->parents().size(), 1u);
    EXPECT_EQ(index, 14);
  }
  {  // Fewer than seven lines left: nothing, and the index goes to the end.
    const QStringList lines{sha, sha, "", "n"};
    qsizetype index = 0;
    EXPECT_FALSE(parser.parseRevision(lines, index));
    EXPECT_EQ(index, 4);
  }
}

}  // namespace
