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

TEST(GraphRowGeometry, DotAndRowWidth) {
  const GraphInfo info{{{0, 0, 0, 0}, {1, 1, 1, 1}, {2, std::nullopt, 1, 2}}, 1, 1};
  EXPECT_EQ(GraphRowGeometry::dot(info, kRow, kMargin, 8), QRectF(14, 27, 8, 8));
  EXPECT_TRUE(GraphRowGeometry::dot(GraphInfo{}, kRow, kMargin, 8).isEmpty());

  const BisectMark bad(QStringLiteral("0"), QStringLiteral("refs/bisect/bad"), QStringLiteral("bad"), QStringLiteral("bad"),
                       QDateTime(), false);
  const LocalBranch main(QStringLiteral("0"), QStringLiteral("refs/heads/main"), QStringLiteral("main"),
                         QStringLiteral("main"), QDateTime(), true, std::nullopt);
  EXPECT_EQ(GraphRowGeometry::labelText(bad), "bisect: bad");
  EXPECT_EQ(GraphRowGeometry::labelText(main), "main");

  const auto fiveEach = [](const QString& text) { return 5.0 * text.size(); };
  // 3 lines * 11 + 2 + margin 4 = 39; "main" 20 + its mark 12; "bisect: bad" 55.
  EXPECT_DOUBLE_EQ(GraphRowGeometry::rowWidth(info, kMargin, {{"main", true}, {"bisect: bad", false}}, fiveEach), 126.0);
  EXPECT_DOUBLE_EQ(GraphRowGeometry::rowWidth(GraphInfo{}, 0, {}, fiveEach), 2.0);
}

}  // namespace
