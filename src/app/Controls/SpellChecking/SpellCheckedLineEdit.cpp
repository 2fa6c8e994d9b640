#include "Controls/SpellChecking/SpellCheckedLineEdit.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <memory>

#include "Controls/SpellChecking/SpellChecker.h"
#include "Controls/SpellChecking/SpellingSuggestions.h"

SpellCheckedLineEdit::SpellCheckedLineEdit(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::textChanged, this, &SpellCheckedLineEdit::check);
}

void SpellCheckedLineEdit::setSpellChecking(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  check();
}

void SpellCheckedLineEdit::check() {
  misspelt_.clear();
  if (enabled_ && echoMode() == QLineEdit::Normal) {
    const QString line = text();
    SpellChecker& checker = SpellChecker::shared();
    for (const WordSpan& word : checkableWords(line)) {
      if (!checker.isCorrect(line.mid(word.start, word.length))) misspelt_.push_back(word);
    }
  }
  update();
}

void SpellCheckedLineEdit::replaceWord(const WordSpan& word, const QString& replacement) {
  setSelection(static_cast<int>(word.start), static_cast<int>(word.length));
  // insert() keeps the edit undoable, unlike setText().
  insert(replacement);
}

qreal SpellCheckedLineEdit::xOf(qsizetype position) const {
  // QLineEdit hides its scroll offset; the cursor's rectangle shows where the text is.
  const QFontMetricsF metrics(font());
  const QString line = text();
  const qreal cursorX = cursorRect().center().x();
  return cursorX - metrics.horizontalAdvance(line.left(cursorPosition())) + metrics.horizontalAdvance(line.left(position));
}

void SpellCheckedLineEdit::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (misspelt_.empty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor(0xd0, 0x30, 0x30), 1.0));
  painter.setClipRect(rect().adjusted(2, 0, -2, 0));
  const QRect cursor = cursorRect();
  const qreal y = cursor.center().y() + QFontMetricsF(font()).ascent() / 2.0 + 2.0;
  for (const WordSpan& word : misspelt_) {
    const qreal left = xOf(word.start);
    const qreal right = xOf(word.start + word.length);
    QPainterPath wave(QPointF(left, y));
    bool up = true;
    for (qreal x = left + 2.0; x <= right; x += 2.0, up = !up) wave.lineTo(x, up ? y - 1.5 : y);
    painter.drawPath(wave);
  }
}

void SpellCheckedLineEdit::contextMenuEvent(QContextMenuEvent* event) {
  std::unique_ptr<QMenu> menu(createStandardContextMenu());
  const int offset = cursorPositionAt(event->pos());
  for (const WordSpan& word : misspelt_) {
    if (offset < word.start || offset > word.start + word.length) continue;
    insertSpellingSuggestions(*menu, text().mid(word.start, word.length),
                              [this, word](const QString& suggestion) { replaceWord(word, suggestion); });
    break;
  }
  menu->exec(event->globalPos());
}
