#include "Controllers/LocalChanges/CommitMessageEdit.h"

#include <QPainter>
#include <QTextDocument>

#include "Services/Preferences.h"

CommitMessageEdit::CommitMessageEdit(QWidget* parent) : QPlainTextEdit(parent) {}

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
