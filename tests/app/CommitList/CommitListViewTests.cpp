// The commit list on histories made in memory: what it computes, marks and shows, its
// keys and clipboard, the lanes' width and the end of a cut history.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/CommitList/CommitListView.h"
#include "Graph/GraphRowGeometry.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Services/Preferences.h"

namespace {

QString hexFor(int n) { return QStringLiteral("%1").arg(n + 1, 40, 16, QLatin1Char('0')); }
ReferencePtr branch(const QString& name, int row, bool active = false, std::optional<QString> upstream = {}) {
  return std::make_shared<LocalBranch>(hexFor(row), "refs/heads/" + name, name, name, QDateTime(), active, std::move(upstream));
}

// A linear history of `count` commits, newest first, HEAD at `headRow`; a cut history's
// oldest commit keeps its parent, since older commits exist.
std::shared_ptr<RevisionGraphSource> linearHistory(int count, int headRow = 0, bool cut = false, ReferenceList references = {}) {
  auto revisions = std::make_shared<RevisionList>();
  for (int i = 0; i < count; ++i) {
    const QStringList parents = i + 1 < count || cut ? QStringList{hexFor(i + 1)} : QStringList{};
    revisions->push_back(Revision::create(hexFor(i), hexFor(0), parents, QStringLiteral("Commit %1").arg(i), "Ada",
                                          "ada@example.com", 1700000000 - i * 60));
  }
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(hexFor(headRow), std::nullopt, std::move(references));
  source->revisions = revisions;
  source->historyCut = cut;
  return source;
}
// "main" at headRow, "ahead" at the top.
std::shared_ptr<RevisionGraphSource> withBranches(int count, int headRow) {
  return linearHistory(count, headRow, false, {branch("main", headRow, true), branch("ahead", 0)});
}

}  // namespace

TEST(CommitListView, OpensALongHistoryComputingOnlyWhatItShows) {
  CommitListView view;
  view.resize(900, 600);
  view.setSource(withBranches(50000, 0));
  view.show();
  QApplication::processEvents();
  view.viewport()->repaint();
  EXPECT_EQ(view.commitModel()->rowCount(), 50000);
  EXPECT_GT(view.commitModel()->computedGraphRows(), 0);
  EXPECT_LE(view.commitModel()->computedGraphRows(), 1024);

  view.scrollToBottom();
  view.viewport()->repaint();
  EXPECT_EQ(view.commitModel()->computedGraphRows(), 50000);
}

TEST(CommitListView, RowsAboveHeadAreUnreachableAndSelectionSurvivesARefresh) {
  CommitListView view;
  view.resize(900, 600);
  view.setSource(withBranches(20, 3));
  auto* model = view.commitModel();
  for (int row = 0; row < 20; ++row) {
    EXPECT_EQ(model->data(model->index(row, CommitListModel::GraphColumn), CommitListModel::ReachableRole).toBool(), row >= 3) << row;
  }
  EXPECT_TRUE(model->decoration(3).isHead);
  ASSERT_EQ(model->decoration(3).references.size(), 1u);
  EXPECT_EQ(model->decoration(3).references[0].reference->name, QStringLiteral("main"));
  EXPECT_EQ(model->data(model->index(5, CommitListModel::ShaColumn)).toString(), hexFor(5).left(7));

  ASSERT_TRUE(view.selectSha(*Sha::fromHex(hexFor(7))));
  view.setSource(withBranches(25, 3));
  ASSERT_TRUE(view.currentRevision());
  EXPECT_EQ(view.currentRevision()->sha().toString(), hexFor(7));
}

TEST(CommitListModel, RelativeDatesReadNaturally) {
  const QDateTime now = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  EXPECT_EQ(CommitListModel::relativeDate(now.addSecs(-30), now), QStringLiteral("just now"));
  EXPECT_EQ(CommitListModel::relativeDate(now.addSecs(-7200), now), QStringLiteral("2 h ago"));
  EXPECT_EQ(CommitListModel::relativeDate(now.addDays(-3), now), QStringLiteral("3 d ago"));
}

// Rows are painted at different moments; two commits of the same second still read alike
// when a minute boundary passes between the two reads.
TEST(CommitListModel, CommitsOfTheSameSecondReadAlike) {
  ASSERT_TRUE(QTest::qWaitFor([] { return QDateTime::currentDateTimeUtc().time().msec() < 300; }, 2000));
  const qint64 when = QDateTime::currentSecsSinceEpoch() - 59;
  auto revisions = std::make_shared<RevisionList>();
  revisions->push_back(Revision::create(hexFor(0), hexFor(0), {hexFor(1)}, QStringLiteral("Second"), QStringLiteral("Ada"),
                                        QStringLiteral("ada@example.com"), when));
  revisions->push_back(Revision::create(hexFor(1), hexFor(0), {}, QStringLiteral("First"), QStringLiteral("Ada"),
                                        QStringLiteral("ada@example.com"), when));
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(hexFor(0), std::nullopt, {});
  source->revisions = revisions;
  CommitListModel model;
  model.setSource(source);
  const QString first = model.data(model.index(0, CommitListModel::DateColumn)).toString();
  QTest::qWait(1200);
  EXPECT_EQ(model.data(model.index(1, CommitListModel::DateColumn)).toString(), first);
}

TEST(CommitListModel, CommitsNotYetPushedAreMarkedAndSaySo) {
  // main two commits ahead of origin/main, on a straight line.
  const auto source = linearHistory(6, 0, false,
                                    {branch("main", 0, true, QStringLiteral("refs/remotes/origin/main")),
                                     std::make_shared<RemoteBranch>(hexFor(2), "refs/remotes/origin/main", "main", "origin/main",
                                                                    QDateTime(), "origin")});
  CommitListView view;
  view.setSource(source);
  auto* model = view.commitModel();
  for (int row = 0; row < 6; ++row) {
    const auto state = static_cast<AheadBehindState>(model->data(model->index(row, 0), CommitListModel::AheadBehindRole).toInt());
    EXPECT_EQ(state, row < 2 ? AheadBehindState::ahead : AheadBehindState::none) << row;
  }
  EXPECT_TRUE(model->data(model->index(1, 0), Qt::ToolTipRole).toString().endsWith(QStringLiteral("Not yet pushed to the upstream branch")));
  EXPECT_EQ(model->data(model->index(3, 0), Qt::ToolTipRole).toString(), QStringLiteral("Commit 3"));
}

TEST(CommitListNavigation, HomeEndAndCopy) {
  CommitListView view;
  view.resize(900, 400);
  view.setSource(linearHistory(100, 0, true));
  view.show();
  view.setCurrentIndex(view.commitModel()->index(50, 0));
  QTest::keyClick(&view, Qt::Key_End);
  EXPECT_EQ(view.currentIndex().row(), 99);  // the last commit, not the note after it
  QTest::keyClick(&view, Qt::Key_Home);
  EXPECT_EQ(view.currentIndex().row(), 0);

  view.selectionModel()->select(view.commitModel()->index(3, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), hexFor(0) + QLatin1Char('\n') + hexFor(3));
}

TEST(CommitListNavigation, ACutHistoryEndsInANoteThatLoadsTheRest) {
  CommitListView view;
  view.resize(900, 400);
  view.setSource(linearHistory(100, 0, true));
  view.show();
  CommitListModel* model = view.commitModel();
  ASSERT_EQ(model->rowCount(), 101);
  EXPECT_TRUE(model->isCutRow(100));
  EXPECT_FALSE(model->revision(100));
  EXPECT_FALSE(model->flags(model->index(100, 0)) & Qt::ItemIsSelectable);
  EXPECT_EQ(model->index(100, 0).data().toString(), CommitListModel::cutRowText(100));
  view.scrollToBottom();
  view.viewport()->repaint();  // the fading lanes of the note paint without a commit

  auto* button = view.findChild<QPushButton*>(QStringLiteral("loadAllCommits"));
  ASSERT_TRUE(button);
  QSignalSpy loadAll(&view, &CommitListView::loadAllRequested);
  button->click();
  EXPECT_EQ(loadAll.count(), 1);

  // The whole history: no note.
  view.setSource(linearHistory(100));
  EXPECT_EQ(model->rowCount(), 100);
  EXPECT_FALSE(view.findChild<QPushButton*>(QStringLiteral("loadAllCommits")));
}

TEST(CommitListNavigation, TheLanesWidthIsRememberedWithinItsBounds) {
  {
    CommitListView view;
    view.setGraphCapFraction(0.5);
    EXPECT_DOUBLE_EQ(view.graphCapFraction(), 0.5);
    view.setGraphCapFraction(3.0);
    EXPECT_DOUBLE_EQ(view.graphCapFraction(), GraphRowGeometry::maximumCapFraction);
    view.setGraphCapFraction(0.45);
  }
  CommitListView next;
  EXPECT_DOUBLE_EQ(next.graphCapFraction(), 0.45);
  Preferences::shared().remove(QStringLiteral("commitListGraphWidth"));
  CommitListView fresh;
  EXPECT_DOUBLE_EQ(fresh.graphCapFraction(), GraphRowGeometry::defaultCapFraction);
}
