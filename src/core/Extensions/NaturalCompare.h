#pragma once
// Orders names the way people read them: case does not count, and a run of digits
// compares as the number it spells, so "file2" comes before "file10".
#include <QStringView>
#include <algorithm>

namespace NaturalCompare {

// Negative, zero or positive. Leading zeros do not count ("07" equals "7").
int compare(QStringView a, QStringView b);

inline bool lessThan(QStringView a, QStringView b) { return compare(a, b) < 0; }

// Appends a key whose plain code-unit order is the order of compare(): letters folded,
// each digit run written as '0', its length without leading zeros, then its digits.
// Sorting many names compares keys, which is several times cheaper.
void appendSortKey(QStringView text, QString& out);
// The order of two keys made by appendSortKey. Inline: keys of one folder share long
// prefixes, and a library call per comparison costs more than the loop.
inline int compareKeys(QStringView a, QStringView b) {
  const char16_t* pa = a.utf16();
  const char16_t* pb = b.utf16();
  const qsizetype n = std::min(a.size(), b.size());
  for (qsizetype i = 0; i < n; ++i) {
    if (pa[i] != pb[i]) return pa[i] < pb[i] ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace NaturalCompare
