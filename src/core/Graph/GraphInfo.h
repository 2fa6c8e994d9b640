#pragma once
// What the commit list paints on the left of one row: the lane segments that cross it
// and the column of the commit's dot.
#include <optional>
#include <vector>

// One lane segment within a row. Columns are lane positions, counted from the left.
struct GraphLine {
  int id = 0;                 // the lane's identity; selects its colour
  std::optional<int> top;     // column at the row's top edge; absent when it starts here
  int middle = 0;             // column at the row's middle
  std::optional<int> bottom;  // column at the bottom edge; absent when it ends here

  bool operator==(const GraphLine&) const = default;
};

struct GraphInfo {
  std::vector<GraphLine> lines;
  int currentCommitColumn = -1;  // -1: no dot (a root that no lane leads to)
  int lineId = -1;               // id of the commit's own lane; -1 when none

  bool operator==(const GraphInfo&) const = default;
};
