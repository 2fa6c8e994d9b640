#include "Controllers/CommitList/CommitListView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "Controllers/CommitList/CommitListDelegate.h"
#include "Services/Preferences.h"

namespace {
const QString kGraphCapFraction = QStringLiteral("commitListGraphWidth");
constexpr int kEdgeGrip = 4;
}  // namespace

CommitListView::CommitListView(QWidget* parent) : QTableView(parent), model_(new CommitListModel(this)) {
  setModel(model_);
  delegate_ = new CommitListDelegate(model_, this);
  setItemDelegate(delegate_);
  if (const double stored = Preferences::shared().real(kGraphCapFraction); stored > 0) delegate_->setCapFraction(stored);
  viewport()->setMouseTracking(true);
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
  updateCutRow();
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

QString CommitListView::selectedShasText() const {
  QStringList shas;
  for (const RevisionPtr& revision : selectedRevisions()) shas << revision->sha().toString();
  return shas.join(QLatin1Char('\n'));
}

void CommitListView::copySelectedShas() const {
  const QString text = selectedShasText();
  if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

QModelIndex CommitListView::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) {
  // The last commit, not the note of a cut history after it.
  const int rows = model_->revisionCount();
  if (rows > 0 && (cursorAction == MoveHome || cursorAction == MoveEnd)) {
    const int column = currentIndex().isValid() ? currentIndex().column() : CommitListModel::GraphColumn;
    return model_->index(cursorAction == MoveHome ? 0 : rows - 1, column);
  }
  return QTableView::moveCursor(cursorAction, modifiers);
}

void CommitListView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    copySelectedShas();
    return;
  }
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

void CommitListView::updateCutRow() {
  // The model's reset only schedules the old note's deletion.
  delete cutRowBar_;
  clearSpans();
  if (!model_->historyCut()) return;
  const int row = model_->revisionCount();
  setSpan(row, 0, 1, CommitListModel::ColumnCount);
  const int height = verticalHeader()->defaultSectionSize();
  verticalHeader()->resizeSection(row, height * 3 / 2);
  auto* bar = new QWidget;
  auto* layout = new QHBoxLayout(bar);
  // The note starts where the subjects do, right of the fading lanes.
  const double lanes = row > 0 ? delegate_->rowLayout(row - 1, QRectF(0, 0, columnWidth(CommitListModel::GraphColumn), height)).contentX : 0;
  layout->setContentsMargins(static_cast<int>(lanes), 0, 8, 0);
  auto* note = new QLabel(model_->index(row, CommitListModel::GraphColumn).data().toString());
  auto* button = new QPushButton(tr("Load All Commits"));
  button->setObjectName(QStringLiteral("loadAllCommits"));
  connect(button, &QPushButton::clicked, this, &CommitListView::loadAllRequested);
  layout->addWidget(note);
  layout->addWidget(button);
  layout->addStretch(1);
  setIndexWidget(model_->index(row, CommitListModel::GraphColumn), bar);
  cutRowBar_ = bar;
}

double CommitListView::graphCapFraction() const { return delegate_->capFraction(); }

void CommitListView::setGraphCapFraction(double fraction) {
  fraction = std::clamp(fraction, GraphRowGeometry::minimumCapFraction, GraphRowGeometry::maximumCapFraction);
  delegate_->setCapFraction(fraction);
  Preferences::shared().setValue(kGraphCapFraction, fraction);
  viewport()->update();
}

bool CommitListView::onGraphEdge(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  if (!index.isValid() || index.row() >= model_->rowCount()) return false;
  const QRect cell = visualRect(model_->index(index.row(), CommitListModel::GraphColumn));
  const GraphRowLayout layout = delegate_->rowLayout(index.row(), cell);
  return layout.clipped && std::abs(position.x() - layout.lanes.right()) <= kEdgeGrip;
}

void CommitListView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && onGraphEdge(event->position().toPoint())) {
    draggingGraphEdge_ = true;
    return;
  }
  QTableView::mousePressEvent(event);
}

void CommitListView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint position = event->position().toPoint();
  if (draggingGraphEdge_) {
    const QRect column(columnViewportPosition(CommitListModel::GraphColumn), 0, columnWidth(CommitListModel::GraphColumn), 1);
    if (column.width() > 0) {
      delegate_->setCapFraction(std::clamp(double(position.x() - column.left()) / column.width(),
                                           GraphRowGeometry::minimumCapFraction, GraphRowGeometry::maximumCapFraction));
      viewport()->update();
    }
    return;
  }
  if (event->buttons() == Qt::NoButton) {
    if (onGraphEdge(position)) {
      viewport()->setCursor(Qt::SplitHCursor);
    } else {
      viewport()->unsetCursor();
    }
  }
  QTableView::mouseMoveEvent(event);
}

void CommitListView::mouseReleaseEvent(QMouseEvent* event) {
  if (draggingGraphEdge_) {
    draggingGraphEdge_ = false;
    setGraphCapFraction(delegate_->capFraction());
    return;
  }
  QTableView::mouseReleaseEvent(event);
}
