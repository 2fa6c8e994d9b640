#include <gtest/gtest.h>

#include "Graph/GraphRowGeometry.h"
#include "Models/BisectMark.h"
#include "Models/LocalBranch.h"

namespace {

// A row 22 high at y 20, lanes after a margin of 4: columns at x 7, 18, 29, ...
const QRectF kRow(0, 20, 300, 22);
constexpr double kMargin = 4;

TEST(GraphRowGeometry, ThreeShapesOfALaneSegment) {
  EXPECT_DOUBLE_EQ(GraphRowGeometry::columnX(2, kMargin), 29.0);
  EXPECT_DOUBLE_EQ(GraphRowGeometry::middleY(kRow), 31.0);

  // From the commit down into a lane further right.
  EXPECT_EQ(GraphRowGeometry::path({1, std::nullopt, 0, 1}, kRow, kMargin),
            (GraphPath{{7, 31}, {18, 42}, true, {18, 31}, {18, 36}}));
  // Passing through while closing up one column.
  EXPECT_EQ(GraphRowGeometry::path({2, 2, 1, 1}, kRow, kMargin), (GraphPath{{29, 20}, {18, 42}, true, {29, 37}, {18, 25}}));
  // Ending in the commit from a column to its right.
  EXPECT_EQ(GraphRowGeometry::path({1, 1, 0, std::nullopt}, kRow, kMargin),
            (GraphPath{{18, 20}, {7, 31}, true, {18, 31}, {12, 31}}));
  // Straight whenever the columns agree.
  EXPECT_EQ(GraphRowGeometry::path({0, 0, 0, 0}, kRow, kMargin), (GraphPath{{7, 20}, {7, 42}, false, {}, {}}));
  EXPECT_EQ(GraphRowGeometry::path({0, std::nullopt, 1, 1}, kRow, kMargin), (GraphPath{{18, 31}, {18, 42}, false, {}, {}}));
  EXPECT_EQ(GraphRowGeometry::path({0, 1, 1, std::nullopt}, kRow, kMargin), (GraphPath{{18, 20}, {18, 31}, false, {}, {}}));
}

TEST(GraphRowGeometry, DotAndLabelText) {
  const GraphInfo info{{{0, 0, 0, 0}, {1, 1, 1, 1}, {2, std::nullopt, 1, 2}}, 1, 1};
  EXPECT_EQ(GraphRowGeometry::dot(info, kRow, kMargin, 8), QRectF(14, 27, 8, 8));
  EXPECT_TRUE(GraphRowGeometry::dot(GraphInfo{}, kRow, kMargin, 8).isEmpty());

  const BisectMark bad("0", "refs/bisect/bad", "bad", "bad", QDateTime(), false);
  const LocalBranch main("0", "refs/heads/main", "main", "main", QDateTime(), true, std::nullopt);
  EXPECT_EQ(GraphRowGeometry::labelText(bad), "bisect: bad");
  EXPECT_EQ(GraphRowGeometry::labelText(main), "main");
}

GraphInfo lanes(int count, int commitColumn) {
  GraphInfo info;
  for (int i = 0; i < count; ++i) info.lines.push_back({i, i, i, i});
  info.currentCommitColumn = info.lineId = commitColumn;
  return info;
}

TEST(GraphRowGeometry, CappedLanesKeepTheSubjectInsideTheColumn) {
  // A Description cell 600 wide at x 100; the default cap is a third of it.
  const QRectF cell(100, 0, 600, 22);
  const double cap = GraphRowGeometry::cap(GraphRowGeometry::defaultCapFraction, cell.width());
  EXPECT_DOUBLE_EQ(cap, 200.0);

  struct Case {
    const char* name;
    GraphInfo info;
    double cap;
    bool clipped;
    QRectF lanes;
    double contentX;
    bool dotBeyond;
  };
  const Case cases[] = {
      // 3 lanes: 4 + 33 + 2 wide, no fade, the subject right after them.
      {"few lanes", lanes(3, 1), cap, false, QRectF(100, 0, 39, 22), 145, false},
      // 90 lanes would take 996 px: clipped at the cap, the dot of column 85 at the edge.
      {"ninety lanes", lanes(90, 85), cap, true, QRectF(100, 0, 200, 22), 306, true},
      // Clipped, but the commit itself sits in a column that is shown.
      {"dot inside the cap", lanes(90, 2), cap, true, QRectF(100, 0, 200, 22), 306, false},
      // A cap wider than the cell never paints past it.
      {"cap past the cell", lanes(90, 85), 5000, true, QRectF(100, 0, 600, 22), 700, true},
  };
  for (const Case& c : cases) {
    const GraphRowLayout layout = GraphRowGeometry::layout(c.info, cell, kMargin, c.cap, 7);
    EXPECT_EQ(layout.clipped, c.clipped) << c.name;
    EXPECT_EQ(layout.lanes, c.lanes) << c.name;
    EXPECT_DOUBLE_EQ(layout.contentX, c.contentX) << c.name;
    EXPECT_EQ(layout.dotBeyondCap, c.dotBeyond) << c.name;
    EXPECT_TRUE(cell.contains(layout.lanes)) << c.name;
    EXPECT_TRUE(layout.lanes.contains(layout.dot)) << c.name;
    EXPECT_EQ(layout.fade.isEmpty(), !c.clipped) << c.name;
    if (c.clipped) {
      EXPECT_DOUBLE_EQ(layout.fade.right(), layout.lanes.right()) << c.name;
    }
  }
  // A dot that is shown stays in its own column.
  EXPECT_DOUBLE_EQ(GraphRowGeometry::layout(lanes(90, 2), cell, kMargin, cap, 7).dot.center().x(),
                   GraphRowGeometry::columnX(2, cell.left() + kMargin));

  // A dragged fraction stays within bounds.
  EXPECT_DOUBLE_EQ(GraphRowGeometry::cap(5.0, 600), 450.0);
  EXPECT_DOUBLE_EQ(GraphRowGeometry::cap(0.0, 600), 48.0);
}

TEST(GraphRowGeometry, LabelsThatDoNotFitLeaveRoomForTheirCount) {
  const std::vector<double> three{50, 50, 50};
  // Each label but the last needs room for a gap of 4 and a chip of 20 after it.
  EXPECT_EQ(GraphRowGeometry::fittingLabels(three, 0, 200, 4, 20), 3);
  EXPECT_EQ(GraphRowGeometry::fittingLabels(three, 0, 158, 4, 20), 3);
  EXPECT_EQ(GraphRowGeometry::fittingLabels(three, 0, 157, 4, 20), 2);
  EXPECT_EQ(GraphRowGeometry::fittingLabels(three, 0, 120, 4, 20), 1);
  EXPECT_EQ(GraphRowGeometry::fittingLabels(three, 100, 120, 4, 20), 0);
  EXPECT_EQ(GraphRowGeometry::fittingLabels({}, 0, 0, 4, 20), 0);
}

}  // namespace
