#pragma once
// Matching and ranking of palette rows against typed text.
//
// A query matches when its characters occur in the text in order, gaps allowed; a
// lower-case ASCII query letter matches either case, any other character only itself.
// The score is the dynamic programme of the fzy matcher: for every query character i and
// text position j, D[i][j] is the best score of a match that puts character i at j, and
// M[i][j] the best score of any match of the first i+1 characters within the first j+1
// positions. A match earns the bonus of its position (the start of a word, a path
// component or a camel-case hump); a run of consecutive matches earns 1 each instead;
// every skipped text character costs a little, less at the ends than inside.
#include <QString>
#include <limits>

namespace FuzzyMatch {

inline constexpr double scoreMin = std::numeric_limits<double>::lowest();
inline constexpr double scoreMax = std::numeric_limits<double>::max();
// Longer texts still match but rank below every scored one.
inline constexpr int maxScoredLength = 1024;

bool matches(const QString& query, const QString& text);
// Meant for a text that matches the query: the score does not test the match itself.
double score(const QString& query, const QString& text);

}  // namespace FuzzyMatch
