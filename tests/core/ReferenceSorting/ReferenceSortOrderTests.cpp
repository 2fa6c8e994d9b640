#include <gtest/gtest.h>

#include "Models/ReferenceSortOrder.h"
#include "Models/Tag.h"

namespace {
TagPtr tag(const QString& name, qint64 time) {
  return std::make_shared<Tag>("0123", "refs/tags/" + name, name, name, QDateTime::fromSecsSinceEpoch(time, Qt::UTC),
                               std::nullopt);
}
QStringList names(const std::vector<TagPtr>& tags) {
  QStringList out;
  for (const auto& t : tags) out << t->name;
  return out;
}
}  // namespace

TEST(ReferenceSortOrder, NumbersCompareAsNumbersAndCaseIsIgnored) {
  std::vector<TagPtr> tags = {tag("v1.10", 3), tag("V1.9", 1), tag("v1.2", 2), tag("alpha", 4)};
  sortReferences(tags, ReferenceSortOrder::name);
  EXPECT_EQ(names(tags), (QStringList{"alpha", "v1.2", "V1.9", "v1.10"}));
  sortReferences(tags, ReferenceSortOrder::nameDescending);
  EXPECT_EQ(names(tags), (QStringList{"v1.10", "V1.9", "v1.2", "alpha"}));
}

TEST(ReferenceSortOrder, NewestFirstThenByNameForTheSameTime) {
  std::vector<TagPtr> tags = {tag("b", 5), tag("a", 5), tag("old", 1), tag("new", 9)};
  sortReferences(tags, ReferenceSortOrder::newestFirst);
  EXPECT_EQ(names(tags), (QStringList{"new", "a", "b", "old"}));
  EXPECT_EQ(referenceSortOrderFromPreference(2), ReferenceSortOrder::newestFirst);
  EXPECT_EQ(referenceSortOrderFromPreference(99), ReferenceSortOrder::name);
}
