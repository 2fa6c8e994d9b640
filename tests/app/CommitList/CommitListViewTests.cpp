#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>

#include "Controllers/CommitList/CommitListView.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"

namespace {

QString hexFor(int n) { return QStringLiteral("%1").arg(n + 1, 40, 16, QLatin1Char('0')); }

// A linear history of `count` commits, newest first, with "main" at `headRow`.
std::shared_ptr<RevisionGraphSource> linearHistory(int count, int headRow) {
  auto revisions = std::make_shared<RevisionList>();
  for (int i = 0; i < count; ++i) {
    const QStringList parents = i + 1 < count ? QStringList{hexFor(i + 1)} : QStringList{};
    revisions->push_back(Revision::create(hexFor(i), hexFor(0), parents, QStringLiteral("Commit %1").arg(i),
                                          QStringLiteral("Ada"), QStringLiteral("ada@example.com"), 1700000000 - i * 60));
  }
  ReferenceList all;
  all.push_back(std::make_shared<LocalBranch>(hexFor(headRow), QStringLiteral("refs/heads/main"), QStringLiteral("main"),
                                              QStringLiteral("main"), QDateTime(), true, std::nullopt));
  all.push_back(std::make_shared<LocalBranch>(hexFor(0), QStringLiteral("refs/heads/ahead"), QStringLiteral("ahead"),
                                              QStringLiteral("ahead"), QDateTime(), false, std::nullopt));
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(hexFor(headRow), std::nullopt, all);
  source->revisions = revisions;
  return source;
}

}  // namespace

TEST(CommitListView, OpensALongHistoryComputingOnlyWhatItShows) {
  CommitListView view;
  view.resize(900, 600);
  view.setSource(linearHistory(50000, 0));
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
  view.setSource(linearHistory(20, 3));
  auto* model = view.commitModel();
  for (int row = 0; row < 20; ++row) {
    EXPECT_EQ(model->data(model->index(row, CommitListModel::GraphColumn), CommitListModel::ReachableRole).toBool(), row >= 3) << row;
  }
  EXPECT_TRUE(model->decoration(3).isHead);
  ASSERT_EQ(model->decoration(3).references.size(), 1u);
  EXPECT_EQ(model->decoration(3).references[0].reference->name, QStringLiteral("main"));
  EXPECT_EQ(model->data(model->index(5, CommitListModel::ShaColumn)).toString(), hexFor(5).left(7));

  ASSERT_TRUE(view.selectSha(*Sha::fromHex(hexFor(7))));
  view.setSource(linearHistory(25, 3));
  ASSERT_TRUE(view.currentRevision());
  EXPECT_EQ(view.currentRevision()->sha().toString(), hexFor(7));
}

TEST(CommitListModel, RelativeDatesReadNaturally) {
  const QDateTime now = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  EXPECT_EQ(CommitListModel::relativeDate(now.addSecs(-30), now), QStringLiteral("just now"));
  EXPECT_EQ(CommitListModel::relativeDate(now.addSecs(-7200), now), QStringLiteral("2 h ago"));
  EXPECT_EQ(CommitListModel::relativeDate(now.addDays(-3), now), QStringLiteral("3 d ago"));
}

TEST(CommitListModel, CommitsNotYetPushedAreMarkedAndSaySo) {
  // main two commits ahead of origin/main, on a straight line.
  auto source = linearHistory(6, 0);
  ReferenceList all;
  all.push_back(std::make_shared<LocalBranch>(hexFor(0), QStringLiteral("refs/heads/main"), QStringLiteral("main"), QStringLiteral("main"),
                                              QDateTime(), true, QStringLiteral("refs/remotes/origin/main")));
  all.push_back(std::make_shared<RemoteBranch>(hexFor(2), QStringLiteral("refs/remotes/origin/main"), QStringLiteral("main"),
                                               QStringLiteral("origin/main"), QDateTime(), QStringLiteral("origin")));
  source->references = RepositoryReferences::make(hexFor(0), std::nullopt, all);
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
