#include "Controls/ContentView/TextContentView.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>

#include "Controls/GitOutputView.h"

class LineNumberGutter : public QWidget {
 public:
  explicit LineNumberGutter(TextContentView* view) : QWidget(view), view_(view) {}
  QSize sizeHint() const override { return {view_->gutterWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { view_->paintGutter(event); }

 private:
  TextContentView* view_;
};

TextContentView::TextContentView(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setFont(GitOutputView::codeFont());
  gutter_ = new LineNumberGutter(this);
  // More lines may need a wider gutter.
  connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { setViewportMargins(gutterWidth(), 0, 0, 0); });
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy != 0) {
      gutter_->scroll(0, dy);
    } else {
      gutter_->update(0, rect.y(), gutter_->width(), rect.height());
    }
  });
  setViewportMargins(gutterWidth(), 0, 0, 0);
}

int TextContentView::gutterWidth() const {
  const int digits = static_cast<int>(QString::number(qMax(1, blockCount())).size());
  return fontMetrics().horizontalAdvance(QLatin1Char('9')) * (digits + 2);
}

void TextContentView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  const QRect contents = contentsRect();
  gutter_->setGeometry(contents.left(), contents.top(), gutterWidth(), contents.height());
}

void TextContentView::paintGutter(QPaintEvent* event) {
  QPainter painter(gutter_);
  const QPalette& colors = palette();
  painter.fillRect(event->rect(), colors.color(QPalette::AlternateBase));
  painter.setPen(colors.color(QPalette::Disabled, QPalette::Text));
  painter.setFont(font());
  const int width = gutter_->width() - fontMetrics().horizontalAdvance(QLatin1Char('9'));
  QTextBlock block = firstVisibleBlock();
  int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
  while (block.isValid() && top <= event->rect().bottom()) {
    const int height = qRound(blockBoundingRect(block).height());
    if (block.isVisible() && top + height >= event->rect().top()) {
      painter.drawText(0, top, width, fontMetrics().height(), Qt::AlignRight, QString::number(block.blockNumber() + 1));
    }
    top += height;
    block = block.next();
  }
}
