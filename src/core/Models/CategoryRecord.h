#pragma once
#include <QString>
#include <cstdint>
#include <optional>

// One row of "categories". Siblings sort by position, which need not be dense.
struct CategoryRecord {
  int64_t id = 0;
  QString name;
  int64_t position = 0;
  // NULL, -1 and any id of no existing category all mean the root.
  std::optional<int64_t> parentId;

  bool operator==(const CategoryRecord&) const = default;
};
