// Records with their changed files, as the history reads of a file print them.
#include <gtest/gtest.h>

#include "../References/ReferencesTestSupport.h"
#include "Git/Commands/Revision/RevisionParser.h"
#include "support/TempRepository.h"

namespace {

TEST(RevisionParserTest, WalksRecordsAndTheirFileListsFromRealOutput) {
  TempRepository repo;
  const QString first = repo.commitFile("dir/old name.txt", "content\n", "add");
  repo.git({"mv", "dir/old name.txt", "dir/nëw name.txt"});
  repo.writeFile("other", "x");
  const QString second = repo.commit("rename and add");
  repo.git({"update-index", "--chmod=+x", "other"});
  repo.git({"rm", "-q", "--cached", "dir/nëw name.txt"});
  repo.git({"commit", "-q", "-m", "mode and delete"});  // not commit(): it would stage the work tree again
  const QString third = repo.headSha();

  const QStringList lines = repo.git({"-c", "core.quotePath=false", "log", "--name-status", "--find-renames",
                                      "--pretty=format:%H%n%T%n%P%n%an%n%ae%n%at%n%s"})
                                .split('\n');
  RevisionParser parser;
  qsizetype index = 0;
  std::vector<std::pair<RevisionPtr, std::vector<ChangedFilePtr>>> records;
  while (index < lines.size()) {
    auto revision = parser.parseRevision(lines, index);
    ASSERT_TRUE(revision) << index;
    records.emplace_back(revision, RevisionParser::readChangedFiles(lines, index));
  }
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(records[0].first->sha().toString(), third);
  EXPECT_EQ(records[1].first->sha().toString(), second);
  EXPECT_EQ(records[2].first->sha().toString(), first);
  EXPECT_EQ(records[0].first->authorIdentity(), records[2].first->authorIdentity());

  const auto& renamed = records[1].second;
  ASSERT_EQ(renamed.size(), 2u);
  EXPECT_EQ(renamed[0]->changeType, ChangeType::renamed);
  EXPECT_EQ(renamed[0]->oldPath, QStringLiteral("dir/old name.txt"));
  EXPECT_EQ(renamed[0]->path, QStringLiteral("dir/nëw name.txt"));
  EXPECT_EQ(renamed[1]->changeType, ChangeType::added);
  EXPECT_FALSE(renamed[1]->oldPath);

  const auto& thirdFiles = records[0].second;
  ASSERT_EQ(thirdFiles.size(), 2u);
  EXPECT_EQ(thirdFiles[0]->changeType, ChangeType::deleted);
  EXPECT_EQ(thirdFiles[1]->changeType, ChangeType::modified);  // a mode change alone
}

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
      {"copied with score", "C075\tfrom\tto", ChangeType::copied, QStringLiteral("from"), "to"},
      {"type change", "T\tlink", ChangeType::typeChanged, std::nullopt, "link"},
      {"unmerged", "U\tboth", ChangeType::unmerged, std::nullopt, "both"},
      {"unknown letter", "X\tweird", ChangeType::unknown, std::nullopt, "weird"},
      {"empty status", "\tno-status", ChangeType::unknown, std::nullopt, "no-status"},
      {"four fields", "R100\ta\tb\tc", ChangeType::renamed, std::nullopt, "a"},
      {"blank in path", "A\twith blank ", ChangeType::added, std::nullopt, "with blank "},
      {"quoted path", "M\t\"say \\\"hi\\\".txt\"", ChangeType::modified, std::nullopt, "say \"hi\".txt"},
      {"quoted rename", "R090\t\"tab\\there\"\tplain", ChangeType::renamed, QStringLiteral("tab\there"), "plain"},
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
  const QString sha = QStringLiteral("0123456789abcdef0123456789abcdef01234567");
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
    EXPECT_EQ(next->message(), QStringLiteral("next"));
    EXPECT_EQ(next->parents().size(), 1u);
    EXPECT_EQ(index, 14);
  }
  {  // Fewer than seven lines left: nothing, and the index goes to the end.
    const QStringList lines{sha, sha, "", "n"};
    qsizetype index = 0;
    EXPECT_FALSE(parser.parseRevision(lines, index));
    EXPECT_EQ(index, 4);
  }
  {  // A file list that runs to the end without an empty line.
    const QStringList lines{"M\ta", "D\tb"};
    qsizetype index = 0;
    EXPECT_EQ(RevisionParser::readChangedFiles(lines, index).size(), 2u);
    EXPECT_EQ(index, 2);
  }
}

}  // namespace
