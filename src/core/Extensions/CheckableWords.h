#pragma once
// The words of a line of prose that a spell checker should look at. A commit message
// is full of things that are not words: identifiers (parseLine, MAX_SIZE), paths,
// URLs, hashes, `code spans`, version numbers. Tokens holding any of those marks are
// left out whole; what remains is split at hyphens and stripped of quotes.
#include <QString>
#include <vector>

struct WordSpan {
  qsizetype start = 0;  // UTF-16 offset in the line
  qsizetype length = 0;
  bool operator==(const WordSpan&) const = default;
};

std::vector<WordSpan> checkableWords(const QString& line);
