// The decoration of rows: HEAD, reachability from HEAD, ahead of or behind the
// upstream, references, collapse state.
#include <gtest/gtest.h>

#include "Graph/RevisionCollectionView.h"
#include "GraphTestSupport.h"

using namespace GraphTest;

namespace {

struct Decorated {
  RevisionGraph graph;
  RevisionCollectionView view;
  const History& history;

  explicit Decorated(const History& h, QSet<QString> filter = {}, const QStringList& collapsed = {}) : history(h) {
    for (const QString& name : collapsed) graph.collapse(shaFor(name));
    graph.update(history.source({}, std::move(filter)));
    view.reset(&graph);
  }
  const DecoratedRevision& row(int r) {
    view.precalculate(r);
    return view.decoratedRevision(r);
  }
  // One letter per row: + ahead, - behind, . neither
  QString aheadBehind() {
    QString text;
    for (int r = 0; r < graph.count(); ++r) {
      const auto state = row(r).aheadBehind;
      text += state == AheadBehindState::ahead ? '+' : state == AheadBehindState::behind ? '-' : '.';
    }
    return text;
  }
  QString reachable() {
    QString text;
    for (int r = 0; r < graph.count(); ++r) text += row(r).isReachable ? 'r' : '.';
    return text;
  }
};

// main (L2) is two commits ahead of origin/main (R1), which is one ahead of it; they
// meet at B.
History diverged() {
  History history("L2: L1\nR1: B\nL1: B\nB: Z\nZ:");
  history.addBranch("main", "L2", true, "refs/remotes/origin/main");
  history.addRemoteBranch("origin", "main", "R1");
  return history;
}

TEST(RevisionCollectionView, AheadAndBehindUntilTheHistoriesMeet) {
  const History history = diverged();
  Decorated decorated(history);
  EXPECT_EQ(decorated.aheadBehind(), "+-+..");

  // Without an upstream, or with one that has no reference, nothing is marked.
  History noUpstream = diverged();
  noUpstream.references.clear();
  noUpstream.addBranch("main", "L2", true, "refs/remotes/origin/gone");
  Decorated missing(noUpstream);
  EXPECT_EQ(missing.aheadBehind(), ".....");
}

TEST(RevisionCollectionView, ReachableFromHeadOnlyBelowItAndOnItsHistory) {
  const History history = diverged();
  Decorated decorated(history);
  EXPECT_EQ(decorated.reachable(), "r.rrr");
  EXPECT_TRUE(decorated.row(0).isHead);
  EXPECT_FALSE(decorated.row(2).isHead);

  // HEAD further down: the rows above it are not reachable.
  History detached = diverged();
  detached.detachHead("L1");
  Decorated below(detached);
  EXPECT_EQ(below.reachable(), "..rrr");
  EXPECT_TRUE(below.row(2).isHead);

  // With a branch filter every shown row counts as reachable.
  Decorated filtered(history, {"refs/remotes/origin/main"});
  EXPECT_EQ(filtered.reachable(), "rrr");
}

TEST(RevisionCollectionView, ReferencesAndCollapseStateOfARow) {
  History history("M: A B\nB: C\nA: C\nC:");
  history.addBranch("main", "M", true);
  history.addTag("v1", "A", true);
  history.addTag("v0", "A");
  history.addRemoteBranch("origin", "main", "M");
  Decorated decorated(history, {}, {"M"});

  QStringList atM;
  for (const DecoratedReference& reference : decorated.row(0).references) atM.append(reference.reference->fullReference);
  EXPECT_EQ(atM, QStringList({"refs/heads/main", "refs/remotes/origin/main"}));
  EXPECT_TRUE(decorated.row(0).isCollapsed);
  ASSERT_EQ(decorated.graph.count(), 3);  // B is hidden by the collapse
  EXPECT_EQ(decorated.row(1).references.size(), 2u);  // an annotated tag counts at its commit
  EXPECT_FALSE(decorated.row(1).isCollapsed);
  EXPECT_TRUE(decorated.row(2).references.empty());
  EXPECT_EQ(decorated.row(1).revision, history.revisions[2]);
}

TEST(RevisionCollectionView, DecoratesBlockByBlockInOrder) {
  History history;
  for (int i = 0; i < 1500; ++i)
    history.add(QString::number(i), i + 1 < 1500 ? QStringList{hexFor(QString::number(i + 1))} : QStringList{});
  history.addBranch("main", "0", true);
  Decorated decorated(history);
  EXPECT_EQ(decorated.view.lastPrecalculatedRow(), -1);
  decorated.view.precalculate(3);
  EXPECT_EQ(decorated.view.lastPrecalculatedRow(), 1023);
  decorated.view.precalculate(1024);
  EXPECT_EQ(decorated.view.lastPrecalculatedRow(), 1499);
  // Reachability flowed across the block edge.
  EXPECT_TRUE(decorated.view.decoratedRevision(1499).isReachable);

  decorated.view.reset(&decorated.graph);
  EXPECT_EQ(decorated.view.lastPrecalculatedRow(), -1);
  decorated.view.precalculate(-1);
  EXPECT_EQ(decorated.view.lastPrecalculatedRow(), -1);
}

}  // namespace
