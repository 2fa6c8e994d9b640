#pragma once
// An argument list has a finite length: long lists of paths go to git in batches.
#include <QList>
#include <QStringList>

namespace PathBatches {
inline constexpr int stageLimit = 4000;    // add, reset, update-index
inline constexpr int discardLimit = 1000;  // checkout-index

// Consecutive slices of at most `limit` paths, in list order; none for an empty list.
inline QList<QStringList> split(const QStringList& paths, int limit) {
  QList<QStringList> batches;
  for (qsizetype start = 0; start < paths.size(); start += limit) batches << paths.mid(start, limit);
  return batches;
}
}  // namespace PathBatches
