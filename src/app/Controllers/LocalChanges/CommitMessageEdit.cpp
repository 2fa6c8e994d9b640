#include "Controllers/LocalChanges/CommitMessageEdit.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>

#include "Controls/SpellChecking/CommitSpellHighlighter.h"
#include "Controls/SpellChecking/SpellChecker.h"
#include "Controls/SpellChecking/SpellingSuggestions.h"
#include "Extensions/CheckableWords.h"

#include "Services/Preferences.h"

CommitMessageEdit::CommitMessageEdit(QWidget* parent)
    : QPlainTextEdit(parent), highlighter_(new CommitSpellHighlighter(document())) {}

void CommitMessageEdit::setSpellChecking(bool on) { highlighter_->setEnabled(on); }
bool CommitMessageEdit::spellChecking() const { return highlighter_->isEnabled(); }

void CommitMessageEdit::contextMenuEvent(QContextMenuEvent* event) {
  std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
  // Suggestions for the misspelt word under the pointer come first.
  const QTextCursor at = cursorForPosition(event->pos());
  const QTextBlock block = at.block();
  const qsizetype offset = at.position() - block.position();
  if (highlighter_->isEnabled()) {
    for (const WordSpan& word : checkableWords(block.text())) {
      if (offset < word.start || offset > word.start + word.length) continue;
      const QString text = block.text().mid(word.start, word.length);
      if (SpellChecker::shared().isCorrect(text)) break;
      insertSpellingSuggestions(*menu, text, [this, block, word](const QString& suggestion) {
        QTextCursor replace(block);
        replace.setPosition(block.position() + static_cast<int>(word.start));
        replace.setPosition(block.position() + static_cast<int>(word.start + word.length), QTextCursor::KeepAnchor);
        replace.insertText(suggestion);
      });
      break;
    }
  }
  menu->exec(event->globalPos());
}

int CommitMessageEdit::storedPageGuideColumn() {
  const QVariant stored = Preferences::shared().value(QStringLiteral("pageGuideLinePosition"));
  bool ok = false;
  const int column = stored.toInt(&ok);
  return ok && column >= 0 ? column : 72;
}

void CommitMessageEdit::setPageGuideColumn(int column) {
  column_ = std::max(0, column);
  viewport()->update();
}

qreal CommitMessageEdit::pageGuideX() const {
  if (column_ <= 0) return -1;
  // Columns of an average character: exact for fixed-pitch fonts, close for others.
  const qreal advance = QFontMetricsF(font()).horizontalAdvance(QLatin1Char('x'));
  return contentOffset().x() + document()->documentMargin() + advance * column_;
}

void CommitMessageEdit::paintEvent(QPaintEvent* event) {
  QPlainTextEdit::paintEvent(event);
  const qreal x = pageGuideX();
  if (x < 0 || x > viewport()->width()) return;
  QPainter painter(viewport());
  QColor color = palette().color(QPalette::Text);
  color.setAlphaF(0.15);
  painter.setPen(QPen(color, 1));
  painter.drawLine(QPointF(x, 0), QPointF(x, viewport()->height()));
}
