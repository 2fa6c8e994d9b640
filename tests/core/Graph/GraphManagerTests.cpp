// Rows are computed a block at a time, in order, and lanes carry over block edges.
#include <gtest/gtest.h>

#include "GraphTestSupport.h"

using namespace GraphTest;

namespace {

// A merge on top of two long lines of history that alternate in the list, so that
// every row has two lanes and the commit's column switches from row to row.
History twoLongLines(int length) {
  History history;
  history.add("top", {hexFor("a0"), hexFor("b0")});
  for (int i = 0; i < length; ++i) {
    for (const QString& side : {"a", "b"}) {
      const QString parent = i + 1 < length ? side + QString::number(i + 1) : "root";
      history.add(side + QString::number(i), {hexFor(parent)});
    }
  }
  history.add("root", {});
  return history;
}

TEST(GraphManager, ComputesWholeBlocksOnlyAsFarAsAsked) {
  const History history = twoLongLines(1500);  // 3002 rows
  RevisionGraph graph;
  graph.update(history.source());
  ASSERT_EQ(graph.count(), 3002);

  GraphManager manager;
  manager.reset(&graph);
  EXPECT_EQ(manager.lastPrecalculatedRow(), -1);
  manager.precalculate(0);
  EXPECT_EQ(manager.lastPrecalculatedRow(), 1023);
  EXPECT_EQ(manager.graphItems().size(), 1024u);
  manager.precalculate(1023);
  EXPECT_EQ(manager.graphItems().size(), 1024u);
  manager.precalculate(1024);
  EXPECT_EQ(manager.lastPrecalculatedRow(), 2047);
  // Going back up computes nothing and forgets nothing.
  manager.precalculate(5);
  EXPECT_EQ(manager.lastPrecalculatedRow(), 2047);
  EXPECT_EQ(manager.graphItems().size(), 2048u);
  manager.precalculate(100000);
  EXPECT_EQ(manager.lastPrecalculatedRow(), 3001);
  ASSERT_EQ(manager.graphItems().size(), 3002u);

  // Across both block edges every inner row has the same two lanes, with the dot
  // alternating between them.
  for (int row = 1; row < 3001; ++row) {
    SCOPED_TRACE(row);
    const GraphInfo& info = manager.graphItem(row);
    const int column = (row - 1) % 2;
    EXPECT_EQ(info.currentCommitColumn, column);
    EXPECT_EQ(info.lineId, column);
    const std::vector<GraphLine> expected = {{0, 0, 0, 0}, {1, 1, 1, 1}};
    EXPECT_EQ(info.lines, expected);
  }
  EXPECT_EQ(manager.graphItem(3001).lines, (std::vector<GraphLine>{{0, 0, 0, std::nullopt}, {1, 1, 0, std::nullopt}}));

  // A reset starts from nothing.
  manager.reset(&graph);
  EXPECT_TRUE(manager.graphItems().empty());
  manager.precalculate(2047);
  EXPECT_EQ(manager.lastPrecalculatedRow(), 2047);
  EXPECT_EQ(manager.graphItem(1500), (GraphInfo{{{0, 0, 0, 0}, {1, 1, 1, 1}}, 1, 1}));
}

TEST(GraphManager, ColumnsPastTheStoredRangeStayAtItsEnd) {
  // More lanes than a stored column can count: the far ones must not wrap round to a
  // negative column, which would read as "no column" and lose the lane's ends.
  const int lanes = LaneColumn::largest + 10;
  std::vector<Line> previous;
  for (int i = 0; i < lanes; ++i) previous.push_back({i, shaFor("elsewhere")});
  previous.push_back({lanes, shaFor("C")});
  std::vector<Line> next;
  const Sha parents[] = {shaFor("D")};
  const GraphInfo info = GraphManager::computeRow(previous, next, parents, shaFor("C"));
  EXPECT_EQ(info.currentCommitColumn, lanes);
  EXPECT_EQ(next.size(), previous.size());
  for (const GraphLine& line : info.lines) {
    ASSERT_TRUE(line.top && line.bottom);
    EXPECT_LE(*line.bottom, LaneColumn::largest);
  }
  EXPECT_EQ(info.lines.back(), (GraphLine{LaneColumn::largest, LaneColumn::largest, LaneColumn::largest, LaneColumn::largest}));
}

}  // namespace
