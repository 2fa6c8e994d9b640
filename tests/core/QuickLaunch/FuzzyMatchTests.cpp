#include <gtest/gtest.h>

#include "QuickLaunch/FuzzyMatch.h"

namespace {

struct MatchRow {
  const char* query;
  const char* text;
  bool matches;
};

// A lower-case ASCII query letter takes either case; anything else only itself.
TEST(FuzzyMatch, MatchesTheQueryInOrderWithGapsAndTheCaseRule) {
  const MatchRow rows[] = {
      {"ab", "A-B", true},      {"ab", "xaxb", true},       {"AB", "ab", false},     {"aB", "Ab", false},
      {"Ab", "Ab", true},       {"ba", "ab", false},        {"abc", "ab", false},    {"", "anything", true},
      {"sm", "src/main.cpp", true}, {"é", "É", false},      {"é", "café", true},     {"a b", "a-b a b", true},
  };
  for (const MatchRow& row : rows) {
    EXPECT_EQ(FuzzyMatch::matches(QString::fromUtf8(row.query), QString::fromUtf8(row.text)), row.matches) << row.query << " in " << row.text;
  }
}

struct ScoreRow {
  const char* name;
  const char* query;
  const char* text;
  double score;
};

// Worked by hand from the constants: a leading or trailing gap costs 0.005 a character,
// an inner one 0.01; a match after "/" earns 0.9, after "-", "_" or a blank 0.8, after
// "." 0.6, a capital after a lower-case letter 0.7, and a consecutive one 1.
TEST(FuzzyMatch, ScoresByTheBonusOfEachPositionAndTheCostOfEachGap) {
  const ScoreRow rows[] = {
      {"start, inner gap, word", "ab", "A-B", 0.9 - 0.01 + 0.8},
      {"leading gap, no bonus", "ab", "xaxb", -0.005 - 0.01},
      {"consecutive, trailing gap", "ab", "abx", 0.9 + 1.0 - 0.005},
      {"leading gap only", "b", "xxb", -0.01},
      {"camel hump", "b", "aB", -0.005 + 0.7},
      {"after a dot", "c", "a.c", -0.01 + 0.6},
      {"after an underscore", "c", "a_c", -0.01 + 0.8},
      {"path component", "m", "src/m", -0.02 + 0.9},
      {"lower case after lower case is no hump", "b", "ab", -0.005},
  };
  for (const ScoreRow& row : rows) {
    EXPECT_NEAR(FuzzyMatch::score(QString::fromUtf8(row.query), QString::fromUtf8(row.text)), row.score, 1e-12) << row.name;
  }
}

TEST(FuzzyMatch, EqualLengthIsPerfectAndEmptyOrOverlongIsNoMatch) {
  EXPECT_EQ(FuzzyMatch::score("readme", "README"), FuzzyMatch::scoreMax);
  EXPECT_GT(FuzzyMatch::score("readme", "README"), FuzzyMatch::score("readme", "README.md"));
  EXPECT_EQ(FuzzyMatch::score("", "abc"), FuzzyMatch::scoreMin);

  // Past 1024 characters a text still matches but is not scored.
  const QString longest = QString(1023, QLatin1Char('x')) + QLatin1Char('a');
  const QString overlong = QString(1024, QLatin1Char('x')) + QLatin1Char('a');
  EXPECT_TRUE(FuzzyMatch::matches("a", overlong));
  EXPECT_EQ(FuzzyMatch::score("a", overlong), FuzzyMatch::scoreMin);
  EXPECT_GT(FuzzyMatch::score("a", longest), FuzzyMatch::scoreMin);
}

TEST(FuzzyMatch, RanksWordStartsAndPathsAboveScatteredLetters) {
  const auto better = [](const char* query, const char* first, const char* second) {
    return FuzzyMatch::score(query, first) > FuzzyMatch::score(query, second);
  };
  EXPECT_TRUE(better("ab", "A-B", "xaxb"));
  EXPECT_TRUE(better("main", "src/main.cpp", "src/domain.cpp"));
  EXPECT_TRUE(better("nb", "New Branch...", "Rename Branch..."));
  EXPECT_TRUE(better("fh", "File History...", "Fetch..."));
  EXPECT_TRUE(better("gc", "GitCommand.h", "agency.h"));
}

}  // namespace
