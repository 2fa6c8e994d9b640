#include "QuickLaunch/FuzzyMatch.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr double gapLeading = -0.005;
constexpr double gapTrailing = -0.005;
constexpr double gapInner = -0.01;
constexpr double matchConsecutive = 1.0;
constexpr double matchSlash = 0.9;
constexpr double matchWord = 0.8;
constexpr double matchCapital = 0.7;
constexpr double matchDot = 0.6;

using BonusTable = std::array<double, 256>;

// The bonus of a position by its previous character: one table for a lower-case letter
// or digit here, one for an upper-case letter (which also starts a camel-case hump).
struct BonusTables {
  BonusTable lower{};
  BonusTable upper{};
  BonusTables() {
    for (BonusTable* table : {&lower, &upper}) {
      (*table)['/'] = matchSlash;
      (*table)['-'] = matchWord;
      (*table)['_'] = matchWord;
      (*table)[' '] = matchWord;
      (*table)['.'] = matchDot;
    }
    for (char c = 'a'; c <= 'z'; ++c) upper[static_cast<unsigned char>(c)] = matchCapital;
  }
};

double bonus(QChar previous, QChar current) {
  static const BonusTables tables;
  const BonusTable* table = current.isUpper() ? &tables.upper : (current.isLower() || current.isDigit()) ? &tables.lower : nullptr;
  if (!table || previous.unicode() > 255) return 0;
  return (*table)[previous.unicode()];
}

bool sameCharacter(QChar query, QChar text) {
  if (query == text) return true;
  return query >= QLatin1Char('a') && query <= QLatin1Char('z') && QChar(query.unicode() - 'a' + 'A') == text;
}

}  // namespace

bool FuzzyMatch::matches(const QString& query, const QString& text) {
  qsizetype at = 0;
  for (const QChar c : query) {
    while (at < text.size() && !sameCharacter(c, text[at])) ++at;
    if (at == text.size()) return false;
    ++at;
  }
  return true;
}

double FuzzyMatch::score(const QString& query, const QString& text) {
  const qsizetype n = query.size();
  const qsizetype m = text.size();
  if (n == 0 || m > maxScoredLength || n > m) return scoreMin;
  if (n == m) return scoreMax;  // a match of equal length is the text itself, but for case

  const QString needle = query.toLower();
  const QString haystack = text.toLower();
  // The bonus reads the text's own case: a capital after a lower-case letter is a hump.
  std::vector<double> matchBonus(static_cast<size_t>(m));
  QChar previous = QLatin1Char('/');  // the text's start counts as the start of a path
  for (qsizetype j = 0; j < m; ++j) {
    matchBonus[static_cast<size_t>(j)] = bonus(previous, text[j]);
    previous = text[j];
  }

  std::vector<double> lastD(static_cast<size_t>(m)), lastM(static_cast<size_t>(m));
  std::vector<double> currD(static_cast<size_t>(m)), currM(static_cast<size_t>(m));
  for (qsizetype i = 0; i < n; ++i) {
    double previousScore = scoreMin;
    const double gap = i == n - 1 ? gapTrailing : gapInner;
    for (qsizetype j = 0; j < m; ++j) {
      const auto at = static_cast<size_t>(j);
      if (needle[i] == haystack[j]) {
        double matchScore = scoreMin;
        if (i == 0) {
          matchScore = static_cast<double>(j) * gapLeading + matchBonus[at];
        } else if (j > 0) {
          // A consecutive match does not add the position's bonus.
          matchScore = std::max(lastM[at - 1] + matchBonus[at], lastD[at - 1] + matchConsecutive);
        }
        currD[at] = matchScore;
        currM[at] = previousScore = std::max(matchScore, previousScore + gap);
      } else {
        currD[at] = scoreMin;
        currM[at] = previousScore = previousScore + gap;
      }
    }
    std::swap(lastD, currD);
    std::swap(lastM, currM);
  }
  return lastM[static_cast<size_t>(m - 1)];
}
