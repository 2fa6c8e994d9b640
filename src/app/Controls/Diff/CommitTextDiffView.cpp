#include "Controls/Diff/CommitTextDiffView.h"

#include <QCursor>
#include <QKeyEvent>
#include <algorithm>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>

#include "Controls/Diff/DiffColors.h"
#include "Controls/Diff/DiffSelectionPopoverController.h"
#include "Controls/GitOutputView.h"
#include "Models/SelectionPatch.h"
#include "Models/WordDiff.h"

using namespace PatchView;

namespace {

// The gutter: line numbers, and a drag there selects whole rows.
class Gutter : public QWidget {
 public:
  explicit Gutter(CommitTextDiffView* view) : QWidget(view), view_(view) { setCursor(Qt::PointingHandCursor); }
  QSize sizeHint() const override { return {view_->gutterWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { view_->paintGutter(event); }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return;
    anchor_ = view_->rowAt(event->position().toPoint().y());
    if (anchor_ >= 0) view_->selectRows(anchor_, anchor_);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (!(event->buttons() & Qt::LeftButton) || anchor_ < 0) return;
    const int row = view_->rowAt(event->position().toPoint().y());
    if (row >= 0) view_->selectRows(anchor_, row);
  }
  void mouseReleaseEvent(QMouseEvent*) override { anchor_ = -1; }

 private:
  CommitTextDiffView* view_;
  int anchor_ = -1;
};

bool isDark(const QWidget* widget) { return widget->palette().color(QPalette::Base).lightness() < 128; }

}  // namespace

CommitTextDiffView::CommitTextDiffView(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setFont(GitOutputView::codeFont());
  GitOutputView::followCodeFont(this, [this] { updateMargins(); });
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  viewport()->setMouseTracking(true);
  gutter_ = new Gutter(this);
  // The bar floats in a column of its own beside the text, so it never covers a line.
  barColumn_ = new QWidget(this);
  barColumn_->setAutoFillBackground(true);
  barColumn_->setBackgroundRole(QPalette::AlternateBase);
  barColumn_->installEventFilter(this);
  barHost_ = barColumn_;
  stageBar_ = new DiffSelectionPopoverController(barColumn_);
  stageBar_->hide();
  updateMargins();
  connect(stageBar_, &DiffSelectionPopoverController::toggleStage, this, &CommitTextDiffView::toggleStageRequested);
  connect(stageBar_, &DiffSelectionPopoverController::discard, this, &CommitTextDiffView::discardRequested);
  connect(this, &QPlainTextEdit::selectionChanged, this, &CommitTextDiffView::onSelectionChanged);
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy) gutter_->scroll(0, dy);
    else gutter_->update(0, rect.y(), gutter_->width(), rect.height());
  });
}

void CommitTextDiffView::showPatch(Document document, Numbers numbers, bool staged) {
  setActiveChunk(std::nullopt);
  patch_ = std::move(document);
  numbers_ = numbers;
  staged_ = staged;
  QString text = patch_.text;
  // Every row ends in a newline; the last one would add an empty block.
  if (text.endsWith(u'\n')) text.chop(1);
  {
    const QSignalBlocker blocker(this);
    setPlainText(text);
  }
  buildRows();
  wordSpans_ = WordDiff::changedSpans(patch_.files);
  qint64 maxNumber = 1;
  for (const Row& row : rows_) maxNumber = std::max({maxNumber, row.oldNumber.value_or(0), row.newNumber.value_or(0)});
  digits_ = static_cast<int>(QString::number(maxNumber).size());
  updateMargins();
  gutter_->update();
  viewport()->update();
}

void CommitTextDiffView::buildRows() {
  rows_.assign(static_cast<size_t>(std::max(document()->blockCount(), 0)), Row{});
  const auto rowOf = [this](qsizetype offset) { return document()->findBlock(static_cast<int>(offset)).blockNumber(); };
  const auto mark = [this](const ChangedLine& line, RowKind kind) {
    if (line.range.isEmpty() || line.line < 0 || line.line >= static_cast<qsizetype>(rows_.size())) return;
    rows_[static_cast<size_t>(line.line)] = Row{kind, line.oldLineNumber, line.newLineNumber};
  };
  for (const FilePatch& file : patch_.files) {
    const int header = rowOf(file.headerRange.location);
    if (header >= 0 && header < static_cast<int>(rows_.size())) rows_[static_cast<size_t>(header)].kind = RowKind::fileHeader;
    for (const Chunk& chunk : file.chunks) {
      const int chunkHeader = rowOf(chunk.header.location);
      if (chunkHeader >= 0 && chunkHeader < static_cast<int>(rows_.size())) rows_[static_cast<size_t>(chunkHeader)].kind = RowKind::hunkHeader;
      for (const SubChunk& sub : chunk.subChunks) {
        for (const ChangedLine& line : sub.preContextLines) mark(line, RowKind::context);
        for (const ChangedLine& line : sub.removedLines) mark(line, RowKind::removed);
        for (const ChangedLine& line : sub.addedLines) mark(line, RowKind::added);
        for (const ChangedLine& line : sub.alignmentLines) mark(line, RowKind::padding);
        for (const ChangedLine& line : sub.postContextLines) mark(line, RowKind::context);
        if (sub.noNewLineAtEndOfFileLine) mark(*sub.noNewLineAtEndOfFileLine, RowKind::marker);
      }
    }
  }
}

XPatchPtr CommitTextDiffView::activeSelectionPatch(SelectionMode mode) const {
  if (!activeChunk_) return nullptr;
  Range range = activeChunk_->range;
  if (activeChunk_->manualSelection) {
    const QTextCursor cursor = textCursor();
    range = {cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
  }
  if (range.length < 1) return nullptr;
  return SelectionPatch::make(range.location, range.end(), mode, patch_.files);
}

std::optional<QRect> CommitTextDiffView::rectOf(const Range& range) const {
  if (range.isEmpty() || document()->isEmpty()) return std::nullopt;
  const int last = std::max(document()->characterCount() - 1, 0);
  QTextCursor start(document());
  start.setPosition(std::clamp(static_cast<int>(range.location), 0, last));
  QTextCursor end(document());
  end.setPosition(std::clamp(static_cast<int>(range.end() - 1), 0, last));
  const QRect top = cursorRect(start);
  const QRect bottom = cursorRect(end);
  return QRect(0, top.top(), viewport()->width(), bottom.bottom() - top.top() + 1);
}

qint64 CommitTextDiffView::selectedChangedLines(const Range& range) const {
  qint64 count = 0;
  const auto countIn = [&](const std::vector<ChangedLine>& lines) {
    for (const ChangedLine& line : lines) {
      if (line.node && !line.range.isEmpty() && line.range.meets(range.location, range.end())) ++count;
    }
  };
  for (const FilePatch& file : patch_.files) {
    if (!file.range.meets(range.location, range.end())) continue;
    for (const Chunk& chunk : file.chunks) {
      if (!chunk.range.meets(range.location, range.end())) continue;
      for (const SubChunk& sub : chunk.subChunks) {
        countIn(sub.removedLines);
        countIn(sub.addedLines);
      }
    }
  }
  return count;
}

void CommitTextDiffView::setOperationsEnabled(bool on) {
  operations_ = on;
  if (!on) setActiveChunk(std::nullopt);
  updateMargins();
}

CommitTextDiffView::~CommitTextDiffView() {
  // A bar lives in the host's column: the guest's goes with the guest, and the host sends
  // it home before the column goes.
  if (!partner_) return;
  partner_->partner_ = nullptr;
  if (barHost_ != barColumn_) {
    delete stageBar_;
  } else if (partner_->barHost_ == barColumn_) {
    partner_->barHost_ = partner_->barColumn_;
    partner_->stageBar_->setParent(partner_->barColumn_);
  }
}

void CommitTextDiffView::shareBarColumnOf(CommitTextDiffView* host) {
  partner_ = host;
  host->partner_ = this;
  barHost_ = host->barColumn_;
  stageBar_->setParent(barHost_);
  stageBar_->hide();
  barHost_->installEventFilter(this);
  updateMargins();
}

int CommitTextDiffView::barColumnWidth() const { return operations_ && barHost_ == barColumn_ ? stageBar_->sizeHint().width() + 8 : 0; }

void CommitTextDiffView::updateMargins() {
  setViewportMargins(gutterWidth(), 0, barColumnWidth(), 0);
  const QRect cr = contentsRect();
  gutter_->setGeometry(QRect(cr.left(), cr.top(), gutterWidth(), cr.height()));
  const QRect text = viewport()->geometry();
  barColumn_->setGeometry(QRect(text.right() + 1, text.top(), barColumnWidth(), text.height()));
  barColumn_->setVisible(operations_ && barHost_ == barColumn_);
}

void CommitTextDiffView::setActiveChunk(std::optional<CommitTextDiffViewChunk> chunk) {
  if (!operations_) chunk.reset();
  if (chunk == activeChunk_) return;
  // One bar in the shared column: the partner's target and selection give way.
  if (chunk && partner_ && partner_->activeChunk_) {
    if (partner_->activeChunk_->manualSelection) {
      QTextCursor cursor = partner_->textCursor();
      cursor.clearSelection();
      partner_->setTextCursor(cursor);
    }
    partner_->setActiveChunk(std::nullopt);
  }
  const bool targetChanged = !chunk || !activeChunk_ || chunk->range != activeChunk_->range ||
                             chunk->manualSelection != activeChunk_->manualSelection;
  activeChunk_ = std::move(chunk);
  gutter_->update();
  if (!activeChunk_) {
    lastMouseLocation_.reset();
    stageBar_->hide();
    return;
  }
  if (targetChanged) {
    stageBar_->setTarget(staged_, activeChunk_->manualSelection,
                         activeChunk_->manualSelection ? selectedChangedLines(activeChunk_->range) : 0);
  }
  // Five pixels below the top of the target, never above the visible top.
  stageBar_->adjustSize();
  const int x = (barHost_->width() - stageBar_->width()) / 2;
  const int top = barHost_->mapFrom(window(), viewport()->mapTo(window(), QPoint(0, 0))).y();
  const int y = top + std::max(activeChunk_->rect.top() + 5, 5);
  stageBar_->move(x, y);
  stageBar_->show();
  stageBar_->raise();
}

void CommitTextDiffView::hoverAt(const QPoint& position) {
  if (activeChunk_ && activeChunk_->manualSelection) return;
  // Nor does a hover on the other half take the bar from selected lines.
  if (partner_ && partner_->activeChunk_ && partner_->activeChunk_->manualSelection) return;
  lastMouseLocation_ = position;
  const QTextBlock last = document()->lastBlock();
  const bool belowText = position.y() > blockBoundingGeometry(last).translated(contentOffset()).bottom();
  const Chunk* chunk = belowText ? nullptr : chunkAt(patch_.files, cursorForPosition(position).position());
  const std::optional<QRect> rect = chunk ? rectOf(chunk->range) : std::nullopt;
  if (!rect) {
    setActiveChunk(std::nullopt);
    return;
  }
  setActiveChunk(CommitTextDiffViewChunk{*rect, chunk->range, false});
  lastMouseLocation_ = position;
}

void CommitTextDiffView::onSelectionChanged() {
  const QTextCursor cursor = textCursor();
  if (!cursor.hasSelection()) {
    setActiveChunk(std::nullopt);
    return;
  }
  const Range range{cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
  if (const std::optional<QRect> rect = rectOf(range)) setActiveChunk(CommitTextDiffViewChunk{*rect, range, true});
}

bool CommitTextDiffView::targetForKeyboard() {
  if (activeChunk_ && activeChunk_->manualSelection) return true;
  if (const Chunk* chunk = chunkAt(patch_.files, textCursor().position())) {
    if (const std::optional<QRect> rect = rectOf(chunk->range)) {
      setActiveChunk(CommitTextDiffViewChunk{*rect, chunk->range, false});
      return true;
    }
  }
  return activeChunk_.has_value();
}

void CommitTextDiffView::refreshGeometry() {
  if (!activeChunk_) return;
  if (!activeChunk_->manualSelection && lastMouseLocation_) {
    hoverAt(*lastMouseLocation_);  // other text lies under the mouse now
    return;
  }
  if (const std::optional<QRect> rect = rectOf(activeChunk_->range)) {
    CommitTextDiffViewChunk moved = *activeChunk_;
    moved.rect = *rect;
    setActiveChunk(moved);
  }
}

void CommitTextDiffView::goToHunk(int direction) {
  std::vector<Range> hunks;
  for (const FilePatch& file : patch_.files) {
    for (const Chunk& chunk : file.chunks) hunks.push_back(chunk.range);
  }
  const qsizetype position = textCursor().position();
  const Range* target = nullptr;
  if (direction > 0) {
    for (const Range& hunk : hunks) {
      if (hunk.location > position) {
        target = &hunk;
        break;
      }
    }
  } else {
    const Chunk* current = chunkAt(patch_.files, position);
    const qsizetype before = current ? current->range.location : position;
    for (const Range& hunk : hunks) {
      if (hunk.location < before) target = &hunk;
    }
  }
  if (!target) return;
  QTextCursor cursor(document());
  cursor.setPosition(static_cast<int>(target->location));
  setTextCursor(cursor);
  ensureCursorVisible();
  if (const std::optional<QRect> rect = rectOf(*target)) setActiveChunk(CommitTextDiffViewChunk{*rect, *target, false});
}

int CommitTextDiffView::rowAt(int y) const {
  const QTextBlock block = cursorForPosition(QPoint(0, y)).block();
  return block.isValid() ? block.blockNumber() : -1;
}

void CommitTextDiffView::selectRows(int fromRow, int toRow) {
  const QTextBlock first = document()->findBlockByNumber(std::min(fromRow, toRow));
  const QTextBlock last = document()->findBlockByNumber(std::max(fromRow, toRow));
  if (!first.isValid() || !last.isValid()) return;
  QTextCursor cursor(document());
  // Dragging upwards keeps the anchor at the end of the first row pressed.
  const int start = first.position();
  const int end = last.position() + last.length() - 1;
  if (fromRow <= toRow) {
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
  } else {
    cursor.setPosition(end);
    cursor.setPosition(start, QTextCursor::KeepAnchor);
  }
  setTextCursor(cursor);
}

int CommitTextDiffView::gutterWidth() const {
  const int columns = numbers_ == Numbers::oldAndNew ? 2 : 1;
  return fontMetrics().horizontalAdvance(QLatin1Char('9')) * ((digits_ + 1) * columns + 1) + 8;
}

void CommitTextDiffView::paintGutter(QPaintEvent* event) {
  QPainter painter(gutter_);
  const bool dark = isDark(this);
  painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
  painter.setFont(font());
  const int columnWidth = fontMetrics().horizontalAdvance(QLatin1Char('9')) * (digits_ + 1);
  QTextBlock block = firstVisibleBlock();
  int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
  while (block.isValid() && top <= event->rect().bottom()) {
    const int height = qRound(blockBoundingRect(block).height());
    const auto number = static_cast<size_t>(block.blockNumber());
    if (number < rows_.size()) {
      const Row& row = rows_[number];
      const DiffRowStyle style = row.kind == RowKind::added     ? DiffRowStyle::added
                                 : row.kind == RowKind::removed ? DiffRowStyle::removed
                                 : row.kind == RowKind::hunkHeader || row.kind == RowKind::fileHeader ? DiffRowStyle::header
                                                                                                      : DiffRowStyle::plain;
      const DiffRowColors colors = diffRowColors(style, dark);
      if (colors.gutter.isValid()) painter.fillRect(0, top, gutter_->width(), height, colors.gutter);
      // Quiet numbers would fade into the tinted gutter of a changed row.
      painter.setPen(palette().color(colors.gutter.isValid() ? QPalette::Text : QPalette::PlaceholderText));
      const auto draw = [&](int column, const std::optional<qint64>& value) {
        if (value) painter.drawText(column * columnWidth, top, columnWidth, height, Qt::AlignRight | Qt::AlignVCenter, QString::number(*value));
      };
      switch (numbers_) {
        case Numbers::oldAndNew:
          draw(0, row.oldNumber);
          draw(1, row.newNumber);
          break;
        case Numbers::oldOnly: draw(0, row.oldNumber); break;
        case Numbers::newOnly: draw(0, row.newNumber); break;
      }
      // The sign of a changed line in the column before the text, as a unified diff reads.
      if (row.kind == RowKind::added || row.kind == RowKind::removed) {
        const int columns = numbers_ == Numbers::oldAndNew ? 2 : 1;
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(columns * columnWidth, top, gutter_->width() - columns * columnWidth - 3, height, Qt::AlignCenter,
                         row.kind == RowKind::added ? QStringLiteral("+") : QStringLiteral("\u2212"));
      }
    }
    block = block.next();
    top += height;
  }
  // The stage bar's target, marked along the gutter's edge.
  if (activeChunk_) {
    painter.fillRect(gutter_->width() - 3, activeChunk_->rect.top(), 3, activeChunk_->rect.height(), palette().color(QPalette::Highlight));
  }
}

void CommitTextDiffView::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(viewport());
    const bool dark = isDark(this);
    const QColor padding = palette().color(QPalette::AlternateBase);
    const QPointF offset = contentOffset();
    const int width = viewport()->width();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
      const QRectF rect = blockBoundingGeometry(block).translated(offset);
      if (rect.top() > event->rect().bottom()) break;
      const auto number = static_cast<size_t>(block.blockNumber());
      if (number >= rows_.size()) continue;
      const RowKind kind = rows_[number].kind;
      QColor background;
      switch (kind) {
        case RowKind::added: background = diffRowColors(DiffRowStyle::added, dark).background; break;
        case RowKind::removed: background = diffRowColors(DiffRowStyle::removed, dark).background; break;
        case RowKind::fileHeader:
        case RowKind::hunkHeader: background = diffRowColors(DiffRowStyle::header, dark).background; break;
        case RowKind::padding: background = padding; break;
        case RowKind::context:
        case RowKind::marker: break;
      }
      if (background.isValid()) painter.fillRect(QRectF(0, rect.top(), width, rect.height()), background);
    }
    paintWordSpans(painter, event->rect(), dark);
  }
  QPlainTextEdit::paintEvent(event);
}

void CommitTextDiffView::paintWordSpans(QPainter& painter, const QRect& area, bool dark) {
  if (wordSpans_.empty()) return;
  const QTextBlock first = firstVisibleBlock();
  if (!first.isValid()) return;
  const auto begin = std::lower_bound(wordSpans_.begin(), wordSpans_.end(), first.position(),
                                      [](const Range& span, int position) { return span.end() <= position; });
  const QPointF offset = contentOffset();
  for (auto span = begin; span != wordSpans_.end(); ++span) {
    const QTextBlock block = document()->findBlock(static_cast<int>(span->location));
    if (!block.isValid()) break;
    const QRectF row = blockBoundingGeometry(block).translated(offset);
    if (row.top() > area.bottom()) break;
    const auto number = static_cast<size_t>(block.blockNumber());
    if (number >= rows_.size()) continue;
    const RowKind kind = rows_[number].kind;
    if (kind != RowKind::added && kind != RowKind::removed) continue;
    QTextCursor from(document());
    from.setPosition(static_cast<int>(span->location));
    QTextCursor to(document());
    to.setPosition(static_cast<int>(std::min<qsizetype>(span->end(), block.position() + block.length() - 1)));
    const int left = cursorRect(from).left();
    const int right = cursorRect(to).left();
    const QColor color = diffWordColor(kind == RowKind::added ? DiffRowStyle::added : DiffRowStyle::removed, dark);
    painter.fillRect(QRectF(left, row.top(), std::max(right - left, 2), row.height()), color);
  }
}

void CommitTextDiffView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  updateMargins();
  refreshGeometry();
}

void CommitTextDiffView::scrollContentsBy(int dx, int dy) {
  QPlainTextEdit::scrollContentsBy(dx, dy);
  refreshGeometry();
}

void CommitTextDiffView::mouseMoveEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseMoveEvent(event);
  if (event->buttons() == Qt::NoButton) hoverAt(event->position().toPoint());
}

void CommitTextDiffView::endHoverUnlessOver(const QWidget* other) {
  if (!activeChunk_ || activeChunk_->manualSelection || !lastMouseLocation_) return;
  if (other->rect().contains(other->mapFromGlobal(QCursor::pos()))) return;
  setActiveChunk(std::nullopt);
}

bool CommitTextDiffView::viewportEvent(QEvent* event) {
  // The mouse left the text, and not for the bar beside it: the hover ends.
  if (event->type() == QEvent::Leave) endHoverUnlessOver(barHost_);
  return QPlainTextEdit::viewportEvent(event);
}

bool CommitTextDiffView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == barHost_ && event->type() == QEvent::Leave) endHoverUnlessOver(viewport());
  return QPlainTextEdit::eventFilter(watched, event);
}

void CommitTextDiffView::keyPressEvent(QKeyEvent* event) {
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const int key = event->key();
  if (modifiers == Qt::NoModifier && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)) {
    if (targetForKeyboard()) Q_EMIT toggleStageRequested();
    return;
  }
  if (modifiers == Qt::NoModifier && (key == Qt::Key_Delete || key == Qt::Key_Backspace)) {
    if (!staged_ && targetForKeyboard()) Q_EMIT discardRequested();
    return;
  }
  if ((modifiers == Qt::NoModifier && key == Qt::Key_N) || (modifiers == Qt::AltModifier && key == Qt::Key_Down)) {
    goToHunk(1);
    return;
  }
  if ((modifiers == Qt::NoModifier && key == Qt::Key_P) || (modifiers == Qt::AltModifier && key == Qt::Key_Up)) {
    goToHunk(-1);
    return;
  }
  QPlainTextEdit::keyPressEvent(event);
}

void CommitTextDiffView::contextMenuEvent(QContextMenuEvent* event) {
  if (!activeChunk_ || !activeChunk_->manualSelection) hoverAt(event->pos());
  std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
  if (activeChunk_) {
    QAction* first = menu->actions().value(0);
    QAction* stage = new QAction(stageBar_->stageButton()->text(), menu.get());
    stage->setEnabled(stageBar_->stageButton()->isEnabled());
    connect(stage, &QAction::triggered, this, &CommitTextDiffView::toggleStageRequested);
    menu->insertAction(first, stage);
    if (!staged_) {
      QAction* discard = new QAction(stageBar_->discardButton()->text() + QStringLiteral("…"), menu.get());
      discard->setEnabled(stageBar_->discardButton()->isEnabled());
      connect(discard, &QAction::triggered, this, &CommitTextDiffView::discardRequested);
      menu->insertAction(first, discard);
    }
    menu->insertSeparator(first);
  }
  menu->exec(event->globalPos());
}
