// Parser rows are real `git status --porcelain -z` output (NUL written as \0), plus
// damaged and truncated records.
#include <gtest/gtest.h>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "StatusTestSupport.h"
#include "support/LogCapture.h"

namespace {

struct ParserRow {
  const char* name;
  QByteArray output;
  QStringList expected;
  QStringList expectedErrors;  // the error-level log lines, in order
};

QStringList parsed(const QByteArray& output, const SubmoduleList& submodules = {}) {
  const auto collection = GetChangedFilesGitCommand::parse(QString::fromUtf8(output), submodules);
  EXPECT_EQ(collection.filesCount, static_cast<int>(collection.changedFiles.size()));
  return describe(collection.changedFiles);
}

QByteArray z(const char* text, size_t size) { return QByteArray(text, static_cast<qsizetype>(size)); }
#define Z(literal) z(literal, sizeof(literal) - 1)

class StatusParserTest : public ::testing::TestWithParam<ParserRow> {};

TEST_P(StatusParserTest, ParsesRecords) {
  const ParserRow& row = GetParam();
  LogCapture log;
  EXPECT_EQ(parsed(row.output), row.expected);
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error), row.expectedErrors);
}

const ParserRow parserRows[] = {
    {"StagedAndModifiedGiveTwoEntriesUnstagedFirst",
     Z("MM a.txt\0"),
     {"unstaged modified 'a.txt'", "staged modified 'a.txt'"},
     {}},
    {"RenameConsumesItsSourceRecord", Z("R  new\0old\0 M z\0"), {"staged renamed 'new' from 'old'", "unstaged modified 'z'"}, {}},
    {"RenamedThenEditedKeepsTheSourceOnTheStagedSideOnly",
     Z("RM new.txt\0old.txt\0"),
     {"unstaged modified 'new.txt'", "staged renamed 'new.txt' from 'old.txt'"},
     {}},
    {"Copy", Z("M  a.txt\0C  b.txt\0a.txt\0"), {"staged modified 'a.txt'", "staged copied 'b.txt' from 'a.txt'"}, {}},
    // An intent-to-add file that git pairs with a deleted one: its source must not be
    // read as a record of its own.
    {"WorkTreeRenameOfIntentToAddFile", Z(" R b.txt\0MM x\0"), {"unstaged renamed 'b.txt' from 'MM x'"}, {}},
    {"MergeToolTemporariesAreSkipped",
     Z("?? file.txt.~BASE\0?? file.txt.~LOCAL\0?? file.txt.~REMOTE\0?? file.txt\0?? file.txt.~BASE.orig\0"),
     {"unstaged added 'file.txt' untracked new", "unstaged added 'file.txt.~BASE.orig' untracked new"},
     {}},
    {"UnmergedCombinationsAreOneUnstagedEntry",
     Z("UU a\0AA b\0DD c\0AU d\0UD e\0DU f\0UA g\0"),
     {"unstaged unmerged 'a'", "unstaged unmerged 'b'", "unstaged unmerged 'c'", "unstaged unmerged 'd'", "unstaged unmerged 'e'",
      "unstaged unmerged 'f'", "unstaged unmerged 'g'"},
     {}},
    {"UntrackedAndIgnored",
     Z("?? new.txt\0!! build/\0"),
     {"unstaged ignored 'build/' untracked", "unstaged added 'new.txt' untracked new"},
     {}},
    {"TypeChangesAndDeletions",
     Z("T  link\0 T link2\0D  gone\0 D gone2\0AM added\0AD short-lived\0"),
     {"unstaged modified 'added'", "staged added 'added'", "staged deleted 'gone'", "unstaged deleted 'gone2'",
      "staged changed 'link'", "unstaged changed 'link2'", "unstaged deleted 'short-lived'", "staged added 'short-lived'"},
     {}},
    {"PathsAreTakenAsTheyStand",
     Z(" M dir/a b.txt\0?? \xc3\xa4\nb.txt\0A  \"quoted\" \\ name\0"),
     {"staged added '\"quoted\" \\ name'", "unstaged modified 'dir/a b.txt'", "unstaged added '\u00e4\nb.txt' untracked new"},
     {}},
    {"EmptyPiecesAreOmitted", Z("\0\0 M a\0\0"), {"unstaged modified 'a'"}, {}},
    {"RecordTooShort", Z("M\0 M ok\0"), {"unstaged modified 'ok'"}, {"Cannot parse changed file in 'M'"}},
    {"RecordWithoutTheBlank", Z("MMxpath\0"), {}, {"Invalid format of status string: 'MMxpath'"}},
    {"UnknownCodesOnBothSides", Z("ZZ f\0 M g\0"), {"unstaged modified 'g'"}, {"Cannot parse status line: 'ZZ f'"}},
    {"UnhandledCodeOnOneSide", Z("XM f\0"), {"unstaged modified 'f'"}, {"Unhandled staged case: 'X'"}},
    {"UnhandledWorkTreeCode", Z("MA f\0"), {"staged modified 'f'"}, {"Unhandled unstaged case: 'A'"}},
    {"OutputCutBeforeTheRenameSource", Z("M  a\0R  new"), {"staged modified 'a'", "staged renamed 'new'"}, {}},
    {"OutputCutInsideTheCodes", Z(" M a\0?"), {"unstaged modified 'a'"}, {"Cannot parse changed file in '?'"}},
    {"NothingChanged", Z(""), {}, {}},
};

INSTANTIATE_TEST_SUITE_P(Rows, StatusParserTest, ::testing::ValuesIn(parserRows),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(StatusParserSubmoduleTest, EntryAtASubmodulePathCarriesTheSubmodule) {
  const SubmoduleList submodules{Submodule{"submodule.", "lib/core", "core"}};
  EXPECT_EQ(parsed(Z(" M lib/core\0 M lib/core2\0M  lib/core\0"), submodules),
            (QStringList{"unstaged modified 'lib/core' submodule=core", "staged modified 'lib/core' submodule=core",
                         "unstaged modified 'lib/core2'"}));
}

}  // namespace
