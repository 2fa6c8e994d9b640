#include "Controllers/MergeConflicts/MergeTextView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>

#include "UI/Appearance.h"

namespace {

QColor tint(const QPalette& palette, int light, int dark) { return QColor::fromRgba(Appearance::isDark(palette) ? QRgb(dark) : QRgb(light)); }

}  // namespace

MergeTextView::MergeTextView(MergeConflictPart part, QWidget* parent) : QPlainTextEdit(parent), part_(part) {
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setUndoRedoEnabled(false);
  // The widget never edits its own text: edits go through the model (keyPressEvent).
  setReadOnly(true);
  setTextInteractionFlags(part == MergeConflictPart::merged
                              ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                              : Qt::TextSelectableByMouse);
  QFont font(QStringLiteral("monospace"));
  font.setStyleHint(QFont::Monospace);
  setFont(font);
  setAttribute(Qt::WA_InputMethodEnabled, part == MergeConflictPart::merged);
  // Drops arrive at the viewport, which read-only text refuses by default.
  viewport()->setAcceptDrops(part == MergeConflictPart::merged);
  Appearance::follow(this, [this] { colourLines(); });
}

const MergeConflictView* MergeTextView::mergeConflictView() const { return controller_ ? &controller_->view(part_) : nullptr; }

void MergeTextView::reload() {
  const MergeConflictView* view = mergeConflictView();
  if (!view) return;
  const int vertical = verticalScrollBar()->value();
  const int horizontal = horizontalScrollBar()->value();
  setPlainText(view->text());
  verticalScrollBar()->setValue(vertical);
  horizontalScrollBar()->setValue(horizontal);
  colourLines();
}

void MergeTextView::colourLines() {
  const MergeConflictView* view = mergeConflictView();
  if (!view) return;
  QList<QTextEdit::ExtraSelection> selections;
  const auto mark = [&](const MergeConflictView::Line& line, const QColor& colour) {
    QTextEdit::ExtraSelection selection;
    selection.format.setBackground(colour);
    selection.format.setProperty(QTextFormat::FullWidthSelection, true);
    selection.cursor = QTextCursor(document()->findBlock(int(line.range.start)));
    selections << selection;
  };
  const QColor service = tint(palette(), 0xffeeeeee, 0xff2b2b2b);
  const QColor open = tint(palette(), 0xffffd8b0, 0xff5a3a1a);
  const QColor chosen = tint(palette(), 0xffd4f5d4, 0xff1f4a2a);
  const QColor conflictSide = tint(palette(), 0xfffff1c9, 0xff4a4220);
  const QColor removed = tint(palette(), 0xffffe0e0, 0xff4a2326);
  const QColor edited = tint(palette(), 0xffe3ecff, 0xff223454);
  for (const MergeConflictView::Chunk& chunk : view->chunks()) {
    const bool isConflict = chunk.origin->kind() == MergeConflict::Chunk::Kind::conflict;
    for (const MergeConflictView::Line& line : chunk.lines) {
      if (line.range.length() == 0) continue;
      if (line.kind == MergeConflictView::LineKind::openConflict) {
        mark(line, open);
      } else if (line.kind == MergeConflictView::LineKind::empty) {
        mark(line, service);
      } else if (part_ == MergeConflictPart::merged) {
        if (line.origin->customString) mark(line, edited);
        else if (chunk.origin->kind() != MergeConflict::Chunk::Kind::context) mark(line, chosen);
      } else if (const MergeConflict::SelectableLine* selectable = line.origin->asSelectable()) {
        if (selectable->isSelected) mark(line, chosen);
        else mark(line, isConflict ? conflictSide : removed);
      }
    }
    for (const MergeConflictView::Line& line : chunk.alignmentLines) mark(line, service);
  }
  setExtraSelections(selections);
}

bool MergeTextView::requestEdit(qsizetype start, qsizetype end, const QString& replacement, bool recordUndo) {
  if (!controller_ || part_ != MergeConflictPart::merged) return false;
  const QString removed = toPlainText().mid(start, end - start);
  const bool newlines = removed.contains(u'\n') || replacement.contains(u'\n');
  const auto cursorAfter = controller_->performUpdate({start, end}, replacement, newlines);
  if (!cursorAfter) return false;
  if (recordUndo) {
    undoStack_.push_back({start, removed, replacement});
    redoStack_.clear();
  }
  QTextCursor cursor = textCursor();
  cursor.setPosition(int(std::min<qsizetype>(*cursorAfter, document()->characterCount() - 1)));
  setTextCursor(cursor);
  return true;
}

bool MergeTextView::undo() {
  if (undoStack_.empty()) return false;
  bool more = true;
  while (more && !undoStack_.empty()) {
    const Edit edit = undoStack_.back();
    if (!requestEdit(edit.start, edit.start + edit.inserted.size(), edit.removed, false)) return false;
    undoStack_.pop_back();
    redoStack_.push_back(edit);
    more = edit.withPrevious;
  }
  return true;
}

bool MergeTextView::redo() {
  if (redoStack_.empty()) return false;
  do {
    const Edit edit = redoStack_.back();
    if (!requestEdit(edit.start, edit.start + edit.removed.size(), edit.inserted, false)) return false;
    redoStack_.pop_back();
    undoStack_.push_back(edit);
  } while (!redoStack_.empty() && redoStack_.back().withPrevious);
  return true;
}

void MergeTextView::dropText(qsizetype at, const QString& text, bool move) {
  const QTextCursor selection = textCursor();
  const qsizetype start = selection.selectionStart();
  const qsizetype end = selection.selectionEnd();
  if (!move || !selection.hasSelection()) {
    requestEdit(at, at, text);
    return;
  }
  if (at >= start && at <= end) return;  // dropped onto itself
  // The later of the two edits first, so that the earlier range still holds.
  const bool first = at > end ? requestEdit(at, at, text) : requestEdit(start, end, QString());
  if (first && (at > end ? requestEdit(start, end, QString()) : requestEdit(at, at, text))) undoStack_.back().withPrevious = true;
}

bool MergeTextView::acceptsDrop(const QDropEvent* event) const {
  return controller_ && part_ == MergeConflictPart::merged && event->mimeData() && event->mimeData()->hasText();
}

void MergeTextView::dragEnterEvent(QDragEnterEvent* event) {
  if (acceptsDrop(event)) event->acceptProposedAction();
  else event->ignore();
}

void MergeTextView::dragMoveEvent(QDragMoveEvent* event) {
  if (acceptsDrop(event)) event->acceptProposedAction();
  else event->ignore();
}

void MergeTextView::dropEvent(QDropEvent* event) {
  if (!acceptsDrop(event)) {
    event->ignore();
    return;
  }
  QString text = event->mimeData()->text();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  // Qt offers only a copy when dragging out of read-only text; inside the result a drag
  // moves, as in any editor, and Ctrl keeps the original.
  const bool fromHere = event->source() == this || event->source() == viewport();
  dropText(cursorForPosition(event->position().toPoint()).position(), text,
           fromHere && !(event->modifiers() & Qt::ControlModifier));
  // The model made the change; the drag's source must not remove the text itself.
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void MergeTextView::paste() {
  QString text = QApplication::clipboard()->text();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  if (text.isEmpty()) return;
  const QTextCursor cursor = textCursor();
  requestEdit(cursor.selectionStart(), cursor.selectionEnd(), text);
}

void MergeTextView::cut() {
  const QTextCursor cursor = textCursor();
  if (!cursor.hasSelection()) return;
  const qsizetype start = cursor.selectionStart();
  const qsizetype end = cursor.selectionEnd();
  const QString text = toPlainText().mid(start, end - start);
  if (requestEdit(start, end, QString())) QApplication::clipboard()->setText(text);
}

void MergeTextView::keyPressEvent(QKeyEvent* event) {
  if (part_ != MergeConflictPart::merged) {
    QPlainTextEdit::keyPressEvent(event);
    return;
  }
  const QTextCursor cursor = textCursor();
  const qsizetype start = cursor.selectionStart();
  const qsizetype end = cursor.selectionEnd();
  if (event->matches(QKeySequence::Undo)) {
    undo();
  } else if (event->matches(QKeySequence::Redo)) {
    redo();
  } else if (event->matches(QKeySequence::Paste)) {
    paste();
  } else if (event->matches(QKeySequence::Cut)) {
    cut();
  } else if (event->key() == Qt::Key_Backspace) {
    if (start != end) requestEdit(start, end, QString());
    else if (start > 0) requestEdit(start - 1, start, QString());
  } else if (event->key() == Qt::Key_Delete) {
    if (start != end) requestEdit(start, end, QString());
    else if (start < document()->characterCount() - 1) requestEdit(start, start + 1, QString());
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    requestEdit(start, end, QStringLiteral("\n"));
  } else if (!event->text().isEmpty() && (event->text().at(0).isPrint() || event->text() == QStringLiteral("\t")) &&
             !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
    requestEdit(start, end, event->text());
  } else {
    // Moving, selecting and copying: the read-only text control does those alone.
    QPlainTextEdit::keyPressEvent(event);
  }
  event->accept();
}

void MergeTextView::inputMethodEvent(QInputMethodEvent* event) {
  if (part_ == MergeConflictPart::merged && !event->commitString().isEmpty()) {
    const QTextCursor cursor = textCursor();
    requestEdit(cursor.selectionStart(), cursor.selectionEnd(), event->commitString());
  }
  event->accept();
}

void MergeTextView::contextMenuEvent(QContextMenuEvent* event) {
  if (part_ != MergeConflictPart::merged) {
    QPlainTextEdit::contextMenuEvent(event);
    return;
  }
  QMenu menu(this);
  const bool selection = textCursor().hasSelection();
  menu.addAction(tr("Undo"), this, [this] { undo(); })->setEnabled(!undoStack_.empty());
  menu.addAction(tr("Redo"), this, [this] { redo(); })->setEnabled(!redoStack_.empty());
  menu.addSeparator();
  menu.addAction(tr("Cut"), this, [this] { cut(); })->setEnabled(selection);
  menu.addAction(tr("Copy"), this, [this] { copy(); })->setEnabled(selection);
  menu.addAction(tr("Paste"), this, [this] { paste(); })->setEnabled(!QApplication::clipboard()->text().isEmpty());
  menu.exec(event->globalPos());
}
