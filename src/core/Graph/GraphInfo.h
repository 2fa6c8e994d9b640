#pragma once
// What the commit list paints on the left of one row: the lane segments that cross it
// and the column of the commit's dot.
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

// A lane column within a row, or none. Two bytes, because a wide history holds hundreds
// of segments in every row and the rows' size is what computing them costs. Columns past
// the largest value are stored as that value: they lie far beyond any lane the list can
// show, where they are drawn at its edge anyway.
class LaneColumn {
 public:
  constexpr LaneColumn() = default;
  constexpr LaneColumn(std::nullopt_t) {}
  constexpr LaneColumn(int column) : value_(saturate(column)) {}

  constexpr explicit operator bool() const { return value_ >= 0; }
  constexpr bool has_value() const { return value_ >= 0; }
  constexpr int operator*() const { return value_; }
  constexpr int value_or(int fallback) const { return value_ >= 0 ? value_ : fallback; }
  constexpr bool operator==(const LaneColumn&) const = default;

  static constexpr int saturate(int column) { return column > largest ? largest : column; }
  static constexpr int largest = std::numeric_limits<std::int16_t>::max();

 private:
  std::int16_t value_ = -1;
};

// One lane segment within a row. Columns are lane positions, counted from the left.
struct GraphLine {
  constexpr GraphLine() = default;
  constexpr GraphLine(int lane, LaneColumn topColumn, int middleColumn, LaneColumn bottomColumn)
      : id(static_cast<std::int16_t>(LaneColumn::saturate(lane))), top(topColumn),
        middle(static_cast<std::int16_t>(LaneColumn::saturate(middleColumn))), bottom(bottomColumn) {}

  std::int16_t id = 0;      // the lane's identity; selects its colour
  LaneColumn top;           // column at the row's top edge; absent when it starts here
  std::int16_t middle = 0;  // column at the row's middle
  LaneColumn bottom;        // column at the bottom edge; absent when it ends here

  bool operator==(const GraphLine&) const = default;
};
static_assert(sizeof(GraphLine) == 8);

struct GraphInfo {
  std::vector<GraphLine> lines;
  int currentCommitColumn = -1;  // -1: no dot (a root that no lane leads to)
  int lineId = -1;               // id of the commit's own lane; -1 when none

  bool operator==(const GraphInfo&) const = default;
};
