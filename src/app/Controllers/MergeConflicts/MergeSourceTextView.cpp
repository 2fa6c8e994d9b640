#include "Controllers/MergeConflicts/MergeSourceTextView.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>

MergeSourceTextView::MergeSourceTextView(MergeConflictPart part, QWidget* parent) : MergeTextView(part, parent) {
  setMouseTracking(true);
  viewport()->setCursor(Qt::PointingHandCursor);
}

void MergeSourceTextView::toggleLine(qsizetype offset) {
  const MergeConflictView* view = mergeConflictView();
  if (!view || !controller_) return;
  const MergeConflictView::Line* line = view->lineAt(offset);
  if (!line || !line->origin) return;
  const MergeConflict::SelectableLine* selectable = line->origin->asSelectable();
  if (!selectable) return;
  if (selectable->isSelected) controller_->removeLine(line->origin);
  else controller_->addLine(line->origin);
}

void MergeSourceTextView::toggleChunk(qsizetype offset) {
  const MergeConflictView* view = mergeConflictView();
  if (!view || !controller_) return;
  const MergeConflictView::Chunk* chunk = view->chunkAt(offset);
  if (!chunk || chunk->origin->kind() == MergeConflict::Chunk::Kind::context) return;
  const auto& change = static_cast<const MergeConflict::ChangeChunk&>(*chunk->origin);
  const auto& lines = change.lines(part());
  const bool allSelected = std::all_of(lines.begin(), lines.end(), [](const auto& line) { return line->isSelected; });
  if (allSelected) controller_->removeChunk(chunk->origin, part());
  else controller_->addChunk(chunk->origin, part());
}

void MergeSourceTextView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    toggleLine(cursorForPosition(event->position().toPoint()).position());
    event->accept();
    return;
  }
  MergeTextView::mousePressEvent(event);
}

void MergeSourceTextView::mouseDoubleClickEvent(QMouseEvent* event) {
  // The first click of the two toggled the line already: the chunk follows the line.
  const qsizetype offset = cursorForPosition(event->position().toPoint()).position();
  toggleLine(offset);
  toggleChunk(offset);
  event->accept();
}

void MergeSourceTextView::mouseMoveEvent(QMouseEvent* event) {
  const MergeConflictView* view = mergeConflictView();
  const MergeConflictView::Chunk* chunk = view ? view->chunkAt(cursorForPosition(event->position().toPoint()).position()) : nullptr;
  if (!chunk || chunk->origin->kind() == MergeConflict::Chunk::Kind::context) {
    activeChunk_ = {};
  } else {
    QTextCursor first(document());
    first.setPosition(int(chunk->range.start));
    QTextCursor last(document());
    last.setPosition(int(std::max(chunk->range.start, chunk->range.end - 1)));
    const QRect top = cursorRect(first);
    const QRect bottom = cursorRect(last);
    activeChunk_ = {QRect(0, top.top(), viewport()->width(), bottom.bottom() - top.top()), chunk->range, chunk->origin};
  }
  event->accept();
}

void MergeSourceTextView::contextMenuEvent(QContextMenuEvent* event) {
  const qsizetype offset = cursorForPosition(event->pos()).position();
  const MergeConflictView* view = mergeConflictView();
  const MergeConflictView::Chunk* chunk = view ? view->chunkAt(offset) : nullptr;
  QMenu menu(this);
  if (chunk && chunk->origin->kind() != MergeConflict::Chunk::Kind::context && controller_) {
    const MergeConflict::ChunkPtr origin = chunk->origin;
    const MergeConflictPart side = part();
    menu.addAction(tr("Use This Side Only"), this, [this, origin, side] { controller_->chooseSide(origin, side); });
    menu.addAction(tr("Add This Side"), this, [this, origin, side] { controller_->addChunk(origin, side); });
    menu.addAction(tr("Remove This Side"), this, [this, origin, side] { controller_->removeChunk(origin, side); });
  }
  if (menu.isEmpty()) return;
  menu.exec(event->globalPos());
}

void MergeSourceTextView::keyPressEvent(QKeyEvent* event) { QPlainTextEdit::keyPressEvent(event); }
