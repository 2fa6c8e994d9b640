#include "Controllers/CommitList/CommitListView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

#include "Controllers/CommitList/CommitListDelegate.h"

CommitListView::CommitListView(QWidget* parent) : QTableView(parent), model_(new CommitListModel(this)) {
  setModel(model_);
  setItemDelegate(new CommitListDelegate(model_, this));
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setShowGrid(false);
  setWordWrap(false);
  setAlternatingRowColors(false);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalHeader()->hide();
  // Fixed heights: the view never measures rows it doesn't show.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionResizeMode(CommitListModel::GraphColumn, QHeaderView::Stretch);
  horizontalHeader()->setSectionResizeMode(CommitListModel::AuthorColumn, QHeaderView::Interactive);
  horizontalHeader()->setSectionResizeMode(CommitListModel::DateColumn, QHeaderView::Interactive);
  horizontalHeader()->setSectionResizeMode(CommitListModel::ShaColumn, QHeaderView::Interactive);
  setColumnWidth(CommitListModel::AuthorColumn, 150);
  setColumnWidth(CommitListModel::DateColumn, 110);
  setColumnWidth(CommitListModel::ShaColumn, 80);
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
    if (restoringSelection_) return;
    Q_EMIT currentRevisionChanged(current.isValid() ? model_->revision(current.row()) : RevisionPtr());
  });
}

void CommitListView::setSource(std::shared_ptr<const RevisionGraphSource> source) {
  // Keep the selected commit across a refresh when it is still listed.
  const RevisionPtr previous = currentRevision();
  model_->setSource(std::move(source));
  if (!previous) return;
  // The same commit selected again is no change; one that a filter took out of the list
  // is no longer the one shown.
  restoringSelection_ = true;
  const bool kept = selectSha(previous->sha());
  restoringSelection_ = false;
  if (!kept) Q_EMIT currentRevisionChanged({});
}

bool CommitListView::selectSha(const Sha& sha) {
  const auto row = model_->row(sha);
  if (!row) return false;
  const QModelIndex index = model_->index(*row, CommitListModel::GraphColumn);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
  return true;
}

RevisionPtr CommitListView::currentRevision() const {
  const QModelIndex current = currentIndex();
  if (!current.isValid() || current.row() >= model_->rowCount()) return {};
  return model_->revision(current.row());
}

std::vector<RevisionPtr> CommitListView::selectedRevisions() const {
  std::vector<RevisionPtr> revisions;
  QModelIndexList rows = selectionModel()->selectedRows();
  std::sort(rows.begin(), rows.end(), [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
  for (const QModelIndex& index : rows) {
    if (RevisionPtr revision = model_->revision(index.row())) revisions.push_back(std::move(revision));
  }
  if (revisions.empty()) {
    if (RevisionPtr current = currentRevision()) revisions.push_back(std::move(current));
  }
  return revisions;
}

void CommitListView::keyPressEvent(QKeyEvent* event) {
  // Left and right collapse and expand a merge's side branches.
  const QModelIndex current = currentIndex();
  if (current.isValid() && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
    const RevisionPtr revision = model_->revision(current.row());
    if (revision && revision->parents().size() > 1) {
      const bool collapsed = model_->graph().isCollapsed(revision->sha());
      if ((event->key() == Qt::Key_Left) != collapsed) {
        const Sha sha = revision->sha();
        model_->toggleCollapsed(current.row());
        selectSha(sha);
      }
      return;
    }
  }
  QTableView::keyPressEvent(event);
}
