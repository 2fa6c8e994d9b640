#pragma once
// Orders names the way people read them: case does not count, and a run of digits
// compares as the number it spells, so "file2" comes before "file10".
#include <QStringView>

namespace NaturalCompare {

// Negative, zero or positive. Leading zeros do not count ("07" equals "7").
int compare(QStringView a, QStringView b);

inline bool lessThan(QStringView a, QStringView b) { return compare(a, b) < 0; }

}  // namespace NaturalCompare
