#include "Extensions/CheckableWords.h"

namespace {

bool isCodeLike(QStringView token) {
  // Marks of paths, URLs, identifiers and markup; prose punctuation is not among them.
  static const QString marks = QStringLiteral("/\\_=<>{}@#$%^&|~+`");
  bool seenLower = false;
  for (qsizetype i = 0; i < token.size(); ++i) {
    const QChar c = token.at(i);
    if (c.isDigit() || marks.contains(c)) return true;
    // camelCase and ALLCAPS after the first letter: a name, not a word.
    if (c.isUpper() && i > 0 && token.at(i - 1).isLetter()) return true;
    if (c.isLower()) seenLower = true;
  }
  // "e.g" and "file.txt" style: a dot between letters.
  for (qsizetype i = 1; i + 1 < token.size(); ++i) {
    if (token.at(i) == QLatin1Char('.') && token.at(i - 1).isLetter() && token.at(i + 1).isLetter()) return true;
  }
  return !seenLower;
}

void addWords(const QString& line, qsizetype start, qsizetype end, std::vector<WordSpan>& words) {
  // Split at hyphens; keep inner apostrophes ("don't"), drop the outer punctuation.
  qsizetype i = start;
  while (i < end) {
    while (i < end && !line.at(i).isLetter()) ++i;
    qsizetype j = i;
    while (j < end && (line.at(j).isLetter() || line.at(j).isMark() ||
                       ((line.at(j) == QLatin1Char('\'') || line.at(j) == QChar(0x2019)) && j + 1 < end &&
                        line.at(j + 1).isLetter()))) {
      ++j;
    }
    if (j - i >= 2) words.push_back({i, j - i});
    i = j;
  }
}

}  // namespace

std::vector<WordSpan> checkableWords(const QString& line) {
  std::vector<WordSpan> words;
  bool inCode = false;  // between backticks
  qsizetype i = 0;
  while (i < line.size()) {
    if (line.at(i).isSpace()) {
      ++i;
      continue;
    }
    qsizetype end = i;
    while (end < line.size() && !line.at(end).isSpace()) ++end;
    const QStringView token = QStringView(line).mid(i, end - i);
    const qsizetype ticks = token.count(QLatin1Char('`'));
    if (!inCode && ticks == 0 && !isCodeLike(token)) addWords(line, i, end, words);
    if (ticks % 2 == 1) inCode = !inCode;
    i = end;
  }
  return words;
}
