// Which commits become rows: branch filter, hidden tags and remote branches, collapsed
// merges, and the lookups of a row.
#include <gtest/gtest.h>

#include "GraphTestSupport.h"

using namespace GraphTest;

namespace {

QStringList rows(const History& history, RevisionGraphOptions options = {}, QSet<QString> filter = {},
                 const QStringList& collapsed = {}) {
  RevisionGraph graph;
  for (const QString& name : collapsed) graph.collapse(shaFor(name));
  graph.update(history.source(options, std::move(filter)));
  return history.rowNames(graph);
}

RevisionGraphOptions hideTags() {
  RevisionGraphOptions options;
  options.hideTags = true;
  return options;
}

// main: M (merge of feature B), a tag on a commit nothing else reaches, a remote
// branch of its own.
History sample() {
  History history("T: C\nR: C\nM: A B\nB: C\nA: C\nC:");
  history.addBranch("main", "M", true);
  history.addBranch("feature", "B");
  history.addTag("v1", "T");
  history.addRemoteBranch("origin", "old", "R");
  return history;
}

TEST(RevisionGraph, BranchFilterShowsOnlyWhatTheChosenReferencesReach) {
  const History history = sample();
  EXPECT_EQ(rows(history, {}, {"refs/heads/feature"}), QStringList({"B", "C"}));
  EXPECT_EQ(rows(history, {}, {"refs/tags/v1", "refs/remotes/origin/old"}), QStringList({"T", "R", "C"}));
  // A filter that matches nothing starts nowhere, and then everything shows.
  EXPECT_EQ(rows(history, {}, {"refs/heads/gone"}), QStringList({"T", "R", "M", "B", "A", "C"}));

  // With a detached HEAD the checked-out commit shows too.
  History detached("M: A B\nB: C\nA: C\nC:");
  detached.addBranch("feature", "B");
  detached.detachHead("A");
  EXPECT_EQ(rows(detached, {}, {"refs/heads/feature"}), QStringList({"B", "A", "C"}));
}

TEST(RevisionGraph, HiddenTagsAndRemoteBranchesTakeTheirOwnCommitsAlong) {
  const History history = sample();
  EXPECT_EQ(rows(history), QStringList({"T", "R", "M", "B", "A", "C"}));
  EXPECT_EQ(rows(history, hideTags()), QStringList({"R", "M", "B", "A", "C"}));
  RevisionGraphOptions hideRemotes;
  hideRemotes.hideRemoteBranches = true;
  EXPECT_EQ(rows(history, hideRemotes), QStringList({"T", "M", "B", "A", "C"}));

  // An annotated tag names its tag object; what it keeps visible is the commit behind it.
  History annotated("T: C\nA: C\nC:");
  annotated.addBranch("main", "A", true);
  annotated.addTag("v2", "T", true);
  EXPECT_EQ(rows(annotated, hideRemotes), QStringList({"T", "A", "C"}));

  // A detached HEAD on a commit that only a hidden tag reaches stays visible.
  History checkedOutTag("T: C\nA: C\nC:");
  checkedOutTag.addBranch("main", "A");
  checkedOutTag.addTag("v3", "T");
  checkedOutTag.detachHead("T");
  EXPECT_EQ(rows(checkedOutTag, hideTags()), QStringList({"T", "A", "C"}));
}

TEST(RevisionGraph, CollapsedMergeHidesOnlyWhatItsOtherParentsAloneReach) {
  // B2 and B1 are reachable only through M's second parent; B1 is also the parent of O,
  // which a branch shows.
  History history("M: A B2\nO: B1\nB2: B1\nB1: X\nA: X\nX:");
  history.addBranch("main", "M", true);
  EXPECT_EQ(rows(history, {}, {}, {"M"}), QStringList({"M", "A", "X"}));

  history.addBranch("other", "O");
  EXPECT_EQ(rows(history, {}, {}, {"M"}), QStringList({"M", "O", "B1", "A", "X"}));

  // In first-parent mode the same set expands M again.
  RevisionGraphOptions firstParent;
  firstParent.showFirstParent = true;
  EXPECT_EQ(rows(history, firstParent, {}, {}), QStringList({"M", "O", "B1", "A", "X"}));
  RevisionGraph graph;
  graph.update(history.source(firstParent));
  EXPECT_TRUE(graph.isCollapsed(shaFor("M")));
  graph.expand(shaFor("M"));
  EXPECT_FALSE(graph.isCollapsed(shaFor("M")));
  EXPECT_EQ(graph.collapsedRevisions().count(shaFor("M")), 1u);  // this mode keeps the expanded ones
  graph.update(history.source(firstParent));
  EXPECT_EQ(history.rowNames(graph), QStringList({"M", "O", "B2", "B1", "A", "X"}));
  graph.collapse(shaFor("M"));
  EXPECT_TRUE(graph.collapsedRevisions().empty());
}

TEST(RevisionGraph, CollapseStateAndTheParentsThatAreDrawn) {
  History history("M: A B\nB: C\nA: C\nC:");
  RevisionGraph graph;
  graph.update(history.source());
  const RevisionPtr merge = history.revisions[0];
  EXPECT_FALSE(graph.isCollapsed(merge->sha()));
  EXPECT_EQ(graph.graphParents(*merge).size(), 2u);
  graph.collapse(merge->sha());
  EXPECT_TRUE(graph.isCollapsed(merge->sha()));
  ASSERT_EQ(graph.graphParents(*merge).size(), 1u);
  EXPECT_EQ(graph.graphParents(*merge)[0], shaFor("A"));
  graph.expand(merge->sha());
  EXPECT_FALSE(graph.isCollapsed(merge->sha()));
  EXPECT_EQ(graph.graphParents(*merge).size(), 2u);
}

TEST(RevisionGraph, RowLookupsBySha) {
  History history("A: B\nB: C\nC:");
  RevisionGraph graph;
  EXPECT_EQ(graph.row(shaFor("A")), std::nullopt);  // nothing loaded yet
  graph.update(history.source());
  EXPECT_EQ(graph.row(shaFor("B")), 1);
  EXPECT_EQ(graph.row(std::optional<Sha>()), std::nullopt);
  EXPECT_EQ(graph.row(shaFor("Z")), std::nullopt);

  const QString hexC = hexFor("C");
  EXPECT_EQ(graph.row(hexC.left(7)), 2);
  EXPECT_EQ(graph.row(hexC.left(7).toUpper()), 2);
  EXPECT_EQ(graph.row(hexC), 2);
  EXPECT_EQ(graph.row(QString()), std::nullopt);
  EXPECT_EQ(graph.row("xyz"), std::nullopt);
  EXPECT_EQ(graph.row(hexC + "0"), std::nullopt);

  // An odd number of digits compares the last half byte too.
  const QString hexA = hexFor("A");
  EXPECT_EQ(graph.row(hexA.left(5)), 0);
  QString wrongLastDigit = hexA.left(5);
  wrongLastDigit[4] = wrongLastDigit[4] == QLatin1Char('0') ? QLatin1Char('1') : QLatin1Char('0');
  EXPECT_NE(graph.row(wrongLastDigit), 0);

  graph.update(nullptr);
  EXPECT_EQ(graph.count(), 0);
}

}  // namespace
