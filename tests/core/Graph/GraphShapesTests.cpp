// Hand-checked lanes of small histories where the lane rules leave a choice (a straight
// line has none; the property tests cover it). Each row of a picture ends with its lines
// as id(top,middle,bottom); the drawing beside them is there for the reader.
#include <gtest/gtest.h>

#include "GraphTestSupport.h"

using namespace GraphTest;

namespace {

struct Drawn {
  QString text;
  QStringList rows;
};

Drawn draw(const History& history, RevisionGraphOptions options = {}, const QList<QString>& collapsed = {}) {
  RevisionGraph graph;
  for (const QString& name : collapsed) graph.collapse(shaFor(name));
  graph.update(history.source(options));
  GraphManager manager;
  manager.reset(&graph);
  return {picture(history, graph, manager), history.rowNames(graph)};
}

QString lines(const char* text) { return QString::fromUtf8(text).trimmed(); }

TEST(GraphShapes, OctopusOpensALanePerParent) {
  EXPECT_EQ(draw(History("O: A B C\nA: R\nB: R\nC: R\nR:")).text, lines(R"(
*      O  0(-,0,0) 1(-,0,1) 2(-,0,2)
|\__
* | |  A  0(0,0,0) 1(1,1,1) 2(2,2,2)
| * |  B  0(0,0,0) 1(1,1,1) 2(2,2,2)
| | *  C  0(0,0,0) 1(1,1,1) 2(2,2,2)
|/__
*      R  0(0,0,-) 1(1,0,-) 2(2,0,-)
)"));
}

// The second merge's first parent opens its own lane beside the one already heading
// for B, while its second parent joins lane 0, which heads for A.
TEST(GraphShapes, CrissCrossMergesJoinExistingLanes) {
  EXPECT_EQ(draw(History("M1: A B\nM2: B A\nA: R\nB: R\nR:")).text, lines(R"(
*      M1  0(-,0,0) 1(-,0,1)
|\
| | *  M2  0(0,0,0) 1(1,1,1) 2(-,2,2) 0(-,2,0)
|/|_|
* | |  A  0(0,0,0) 1(1,1,1) 2(2,2,2)
| |/
| *    B  0(0,0,0) 1(1,1,1) 2(2,1,-)
|/
*      R  0(0,0,-) 1(1,0,-)
)"));
}

// Lane 1 ends in C; lane 2, right of it, moves left within the same row and keeps its id.
TEST(GraphShapes, LanesCloseUpWhenABranchEnds) {
  EXPECT_EQ(draw(History("A: C\nB: C\nD: E\nC: E\nE:")).text, lines(R"(
*      A  0(-,0,0)
| *    B  0(0,0,0) 1(-,1,1)
| | *  D  0(0,0,0) 1(1,1,1) 2(-,2,2)
|/ /
* |    C  0(0,0,0) 1(1,0,-) 2(2,1,1)
|/
*      E  0(0,0,-) 2(1,0,-)
)"));
}

// Two lanes head for P side by side; at P the left one carries it and the right one
// ends there. M's second parent joins the leftmost lane for P, not a new one.
TEST(GraphShapes, TwoTipsOnOneParentRunSideBySide) {
  EXPECT_EQ(draw(History("X: P\nY: P\nM: Z P\nZ: P\nP:")).text, lines(R"(
*      X  0(-,0,0)
| *    Y  0(0,0,0) 1(-,1,1)
| | *  M  0(0,0,0) 1(1,1,1) 2(-,2,2) 0(-,2,0)
|/|_|
| | *  Z  0(0,0,0) 1(1,1,1) 2(2,2,2)
|/__
*      P  0(0,0,-) 1(1,0,-) 2(2,0,-)
)"));
}

TEST(GraphShapes, RootsWithoutLanesAndAnEmptyList) {
  // A lone root that nothing leads to has no dot and no lines.
  RevisionGraph graph;
  History single("R:");
  graph.update(single.source());
  GraphManager manager;
  manager.reset(&graph);
  manager.precalculate(0);
  ASSERT_EQ(manager.graphItems().size(), 1u);
  EXPECT_EQ(manager.graphItem(0), (GraphInfo{{}, -1, -1}));

  History empty("");
  graph.update(empty.source());
  manager.reset(&graph);
  manager.precalculate(0);
  EXPECT_TRUE(manager.graphItems().empty());
  EXPECT_EQ(manager.lastPrecalculatedRow(), -1);
}

TEST(GraphShapes, FirstParentModeFollowsOnlyFirstParentsUntilAMergeIsExpanded) {
  History history("M: A B\nB: C\nA: C\nC:");
  history.addBranch("main", "M", true);
  RevisionGraphOptions firstParent;
  firstParent.showFirstParent = true;

  const QString straight = lines(R"(
*  M  0(-,0,0)
*  A  0(0,0,0)
*  C  0(0,0,-)
)");
  EXPECT_EQ(draw(history, firstParent).text, straight);

  // The same merge collapsed in the normal mode draws the first-parent line.
  const Drawn collapsed = draw(history, {}, {"M"});
  EXPECT_EQ(collapsed.text, straight);
}

TEST(GraphShapes, StashSitsAboveItsCommitOnALaneOfItsOwn) {
  History history("A: B\nB: C\nC:");
  history.addStash("S", "B");
  EXPECT_EQ(draw(history).text, lines(R"(
*    A  0(-,0,0)
| *  S  0(0,0,0) 1(-,1,1)
|/
*    B  0(0,0,0) 1(1,0,-)
*    C  0(0,0,-)
)"));
  RevisionGraphOptions hide;
  hide.hideStashes = true;
  EXPECT_EQ(draw(history, hide).rows, QStringList({"A", "B", "C"}));
}

}  // namespace
