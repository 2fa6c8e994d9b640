// Keys, the clipboard, the lanes' width and the end of a cut history in the commit list.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/CommitList/CommitListView.h"
#include "Graph/GraphRowGeometry.h"
#include "Services/Preferences.h"

namespace {

QString hexFor(int n) { return QStringLiteral("%1").arg(n + 1, 40, 16, QLatin1Char('0')); }

std::shared_ptr<RevisionGraphSource> linearHistory(int count, bool cut) {
  auto revisions = std::make_shared<RevisionList>();
  for (int i = 0; i < count; ++i) {
    // The oldest keeps a parent when the history was cut: older commits exist.
    const QStringList parents = i + 1 < count || cut ? QStringList{hexFor(i + 1)} : QStringList{};
    revisions->push_back(Revision::create(hexFor(i), hexFor(0), parents, QStringLiteral("Commit %1").arg(i), QStringLiteral("Ada"),
                                          QStringLiteral("ada@example.com"), 1700000000 - i * 60));
  }
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(hexFor(0), std::nullopt, {});
  source->revisions = revisions;
  source->historyCut = cut;
  return source;
}

}  // namespace

TEST(CommitListNavigation, HomeEndAndCopy) {
  CommitListView view;
  view.resize(900, 400);
  view.setSource(linearHistory(100, true));
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
  view.setSource(linearHistory(100, true));
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
  view.setSource(linearHistory(100, false));
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
