#include <gtest/gtest.h>

#include <QStringList>

#include "Extensions/CheckableWords.h"

namespace {
QStringList wordsOf(const QString& line) {
  QStringList words;
  for (const WordSpan& span : checkableWords(line)) words << line.mid(span.start, span.length);
  return words;
}
}  // namespace

TEST(CheckableWords, ProseIsCheckedAndCodeIsNot) {
  struct Row {
    const char* name;
    const char* line;
    QStringList words;
  };
  const Row rows[] = {
      {"prose with punctuation", "Fix the parser, (really) don't crash.", {"Fix", "the", "parser", "really", "don't", "crash"}},
      {"identifiers", "Rename parseLine to MAX_SIZE in GitRequest", {"Rename", "to", "in"}},
      {"paths and urls", "See src/core/a.cpp and https://example.com/x", {"See", "and"}},
      {"code span", "Call `git status --porcelain` first", {"Call", "first"}},
      {"numbers and hashes", "Bump to 2.39 after 3f2a1c9", {"Bump", "to", "after"}},
      {"hyphens split", "a well-known fix", {"well", "known", "fix"}},
      {"acronyms", "Use UTF-8 and JSON here", {"Use", "and", "here"}},
      {"file names", "Update README.md e.g. now", {"Update", "now"}},
      {"non-ASCII letters", "Fügt Größe hinzu", {"Fügt", "Größe", "hinzu"}},
      // The spans are UTF-16 positions: after a surrogate pair the words still come out whole.
      {"after an emoji", "😀 naïve text", {"naïve", "text"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(wordsOf(QString::fromUtf8(row.line)), row.words) << row.name;
  }
}
