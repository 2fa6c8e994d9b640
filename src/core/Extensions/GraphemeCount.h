#pragma once
#include <QStringView>
#include <limits>

// User-perceived characters (extended grapheme clusters): "e" plus a combining accent
// is one, a surrogate pair is one, and so is "\r\n".
namespace GraphemeCount {

// Counting stops as soon as the count passes `limit`; the result is then limit + 1.
qsizetype count(QStringView text, qsizetype limit = std::numeric_limits<qsizetype>::max() - 1);

}  // namespace GraphemeCount
