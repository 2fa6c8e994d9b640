// Generated histories: whatever the shape and the display options, every parent edge
// of a visible row is drawn as one unbroken lane, and lane ids and columns obey the
// rules of the lane algorithm.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "GraphTestSupport.h"

using namespace GraphTest;

namespace {

constexpr int kEnd = -1;  // a lane that runs past the last row

struct Generated {
  History history;
  std::vector<QStringList> parentsOf;  // by commit number
};

// Grows a history the way people do: commits on several branches at once, new branches
// off older commits, merges of two or three branches, now and then a second root.
// Then lists it children first in a random valid order, as git's topological and date
// orders both are.
Generated generate(std::mt19937& random, int commits) {
  auto chance = [&](int percent) { return std::uniform_int_distribution<int>(0, 99)(random) < percent; };
  auto pick = [&](int size) { return std::uniform_int_distribution<int>(0, size - 1)(random); };

  std::vector<QStringList> parents;
  std::vector<int> tips;
  for (int n = 0; n < commits; ++n) {
    QStringList p;
    if (tips.empty() || chance(3)) {
      // a root
    } else if (chance(15) && n > 0) {
      p.append(QString::number(pick(n)));  // branch off an older commit
    } else {
      const int tip = pick(static_cast<int>(tips.size()));
      p.append(QString::number(tips[static_cast<size_t>(tip)]));
      tips.erase(tips.begin() + tip);
      const int extra = chance(20) ? (chance(20) ? 2 : 1) : 0;
      for (int k = 0; k < extra && !tips.empty(); ++k) {
        const int other = pick(static_cast<int>(tips.size()));
        if (!p.contains(QString::number(tips[static_cast<size_t>(other)]))) p.append(QString::number(tips[static_cast<size_t>(other)]));
        tips.erase(tips.begin() + other);
      }
    }
    parents.push_back(p);
    tips.push_back(n);
  }

  std::vector<int> childCount(static_cast<size_t>(commits), 0);
  for (const QStringList& p : parents)
    for (const QString& parent : p) ++childCount[static_cast<size_t>(parent.toInt())];
  std::vector<int> ready;
  for (int n = 0; n < commits; ++n)
    if (childCount[static_cast<size_t>(n)] == 0) ready.push_back(n);

  Generated result;
  result.parentsOf = parents;
  while (!ready.empty()) {
    const int index = pick(static_cast<int>(ready.size()));
    const int n = ready[static_cast<size_t>(index)];
    ready.erase(ready.begin() + index);
    QStringList hexes;
    for (const QString& parent : parents[static_cast<size_t>(n)]) {
      hexes.append(hexFor(parent));
      if (--childCount[static_cast<size_t>(parent.toInt())] == 0) ready.push_back(parent.toInt());
    }
    result.history.add(QString::number(n), hexes);
  }

  // References on tips and elsewhere, a few stashes.
  for (size_t i = 0; i < tips.size(); ++i) {
    const QString at = QString::number(tips[i]);
    if (i == 0) {
      result.history.addBranch("main", at, true);
    } else if (chance(50)) {
      result.history.addBranch(QStringLiteral("topic%1").arg(i), at);
    } else {
      result.history.addRemoteBranch("origin", QStringLiteral("topic%1").arg(i), at);
    }
  }
  for (int t = 0; t < 3; ++t) result.history.addTag(QStringLiteral("v%1").arg(t), QString::number(pick(commits)), chance(50));
  for (int s = 0; s < 2; ++s) result.history.addStash(QStringLiteral("stash%1").arg(s), QString::number(pick(commits)));
  return result;
}

void checkRow(const RevisionGraph& graph, const std::vector<GraphInfo>& rows, int r, const std::map<Sha, int>& rowOf) {
  SCOPED_TRACE(QStringLiteral("row %1").arg(r).toStdString());
  const GraphInfo& info = rows[static_cast<size_t>(r)];
  const int column = info.currentCommitColumn;
  const auto parents = graph.graphParents(*graph.revision(r));

  // The lanes entering from above are exactly those that left the row above.
  std::set<int> openAbove;
  if (r > 0)
    for (const GraphLine& line : rows[static_cast<size_t>(r - 1)].lines)
      if (line.bottom) openAbove.insert(*line.bottom);
  std::vector<int> tops;
  std::set<int> bottoms;
  for (const GraphLine& line : info.lines) {
    if (line.top) tops.push_back(*line.top);
    if (line.bottom) bottoms.insert(*line.bottom);
  }
  std::sort(tops.begin(), tops.end());
  ASSERT_EQ(tops, std::vector<int>(openAbove.begin(), openAbove.end()));
  // Columns close up: the lanes that leave fill 0..n-1.
  if (!bottoms.empty()) {
    ASSERT_EQ(*bottoms.rbegin(), static_cast<int>(bottoms.size()) - 1);
  }
  for (int t = 0; t < static_cast<int>(tops.size()); ++t) ASSERT_EQ(tops[static_cast<size_t>(t)], t);

  // No dot only for a root that no lane leads to.
  const bool laneEndsHere =
      std::any_of(info.lines.begin(), info.lines.end(), [](const GraphLine& l) { return l.top && !l.bottom; });
  ASSERT_EQ(column < 0, parents.empty() && !laneEndsHere);
  ASSERT_EQ(column < 0, info.lineId < 0);

  int previousPassBottom = -1;
  for (const GraphLine& line : info.lines) {
    if (line.top && line.bottom) {
      ASSERT_EQ(line.middle, *line.bottom);
      if (line.middle != column) {
        // lanes passing by keep their order
        ASSERT_GT(*line.bottom, previousPassBottom);
        previousPassBottom = *line.bottom;
      }
    } else {
      // a lane that starts or ends here does so at the commit
      ASSERT_EQ(line.middle, column);
      ASSERT_TRUE(line.top || line.bottom);
    }
    // a lane keeps its id from row to row
    if (line.top && r > 0) {
      for (const GraphLine& above : rows[static_cast<size_t>(r - 1)].lines)
        if (above.bottom == line.top) {
          ASSERT_EQ(above.id, line.id);
        }
    }
    if (!line.top) {
      const auto sharing = std::find_if(info.lines.begin(), info.lines.end(), [&](const GraphLine& other) {
        return &other != &line && other.bottom == line.bottom && (other.top || &other < &line);
      });
      if (sharing == info.lines.end()) {
        ASSERT_EQ(line.id, *line.bottom) << "a new lane takes the column it is born in as its id";
      } else {
        ASSERT_EQ(line.id, sharing->id) << "a parent that joins a lane draws in that lane's id";
      }
    }
  }

  // The commit's own lane.
  if (column >= 0) {
    const auto carrier = std::find_if(info.lines.begin(), info.lines.end(),
                                      [&](const GraphLine& l) { return l.top && l.middle == column; });
    if (carrier != info.lines.end()) {
      ASSERT_EQ(info.lineId, carrier->id);
    } else {
      ASSERT_EQ(info.lineId, column);
    }
  }

  // Every parent edge: one lane leaves the commit per parent and runs, unbroken, to
  // that parent's row, or past the end when the parent is not shown.
  std::vector<int> reached;
  for (const GraphLine& line : info.lines) {
    if (parents.empty() || line.middle != column || !line.bottom) continue;
    int bottom = *line.bottom;
    int t = r + 1;
    for (;; ++t) {
      if (t == static_cast<int>(rows.size())) {
        t = kEnd;
        break;
      }
      const GraphInfo& below = rows[static_cast<size_t>(t)];
      const auto next = std::find_if(below.lines.begin(), below.lines.end(), [&](const GraphLine& l) { return l.top == bottom; });
      ASSERT_NE(next, below.lines.end()) << "lane broken below row " << t - 1;
      ASSERT_EQ(next->id, line.id);
      // A root opens no lane below it, so a lane passing it may share its column.
      const bool isRoot = graph.graphParents(*graph.revision(t)).empty();
      if (next->middle == below.currentCommitColumn && (!isRoot || !next->bottom)) break;
      ASSERT_TRUE(next->bottom.has_value()) << "lane ends away from a commit in row " << t;
      bottom = *next->bottom;
    }
    reached.push_back(t);
  }
  std::vector<int> expected;
  for (const Sha& parent : parents) {
    const auto found = rowOf.find(parent);
    expected.push_back(found == rowOf.end() ? kEnd : found->second);
  }
  std::sort(reached.begin(), reached.end());
  std::sort(expected.begin(), expected.end());
  ASSERT_EQ(reached, expected);
}

TEST(GraphProperties, EveryParentEdgeIsOneUnbrokenLaneWhateverTheOptions) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(QStringLiteral("round %1").arg(round).toStdString());
    const Generated generated = generate(random, 20 + round % 120);
    const History& history = generated.history;

    RevisionGraphOptions options;
    options.showFirstParent = round % 4 == 1;
    options.hideTags = round % 3 == 0;
    options.hideRemoteBranches = round % 5 == 0;
    options.hideStashes = round % 7 == 0;
    QSet<QString> filter;
    if (round % 6 == 5) filter.insert(history.references[static_cast<size_t>(round) % history.references.size()]->fullReference);

    RevisionGraph graph;
    // Collapse or expand a few merges.
    if (round % 2 == 0) {
      for (const RevisionPtr& revision : history.revisions)
        if (revision->parents().size() > 1 && (revision->sha().bytes()[0] & 1)) graph.collapse(revision->sha());
    }
    graph.update(history.source(options, filter));
    ASSERT_GT(graph.count(), 0);

    // Asked for out of order and more than once, blocks still come out in order.
    GraphManager manager;
    manager.reset(&graph);
    for (int request : {graph.count() / 2, 0, graph.count() - 1, 3}) manager.precalculate(request);
    ASSERT_EQ(static_cast<int>(manager.graphItems().size()), graph.count());

    std::map<Sha, int> rowOf;
    for (int r = graph.count() - 1; r >= 0; --r) rowOf[graph.revision(r)->sha()] = r;
    for (int r = 0; r < graph.count(); ++r) {
      checkRow(graph, manager.graphItems(), r, rowOf);
      if (testing::Test::HasFatalFailure()) {
        GraphManager again;
        again.reset(&graph);
        ADD_FAILURE() << picture(history, graph, again).toStdString();
        return;
      }
    }
  }
}

}  // namespace
