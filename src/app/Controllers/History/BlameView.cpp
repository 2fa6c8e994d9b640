#include "Controllers/History/BlameView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>

#include "Controllers/CommitList/CommitListModel.h"
#include "Controls/GitOutputView.h"

class BlameGutter : public QWidget {
 public:
  explicit BlameGutter(BlameView* view) : QWidget(view), view_(view) { setCursor(Qt::PointingHandCursor); }
  QSize sizeHint() const override { return {view_->gutterWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { view_->paintGutter(event); }
  void mousePressEvent(QMouseEvent* event) override {
    view_->gutterPressed(event->position().toPoint(), event->button() == Qt::RightButton, event->globalPosition().toPoint());
  }

 private:
  BlameView* view_;
};

BlameView::BlameView(QWidget* parent) : QPlainTextEdit(parent) {
  setObjectName(QStringLiteral("blameView"));
  setReadOnly(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setFont(GitOutputView::codeFont());
  gutter_ = new BlameGutter(this);
  setViewportMargins(gutterWidth(), 0, 0, 0);
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy != 0) {
      gutter_->scroll(0, dy);
    } else {
      gutter_->update(0, rect.y(), gutter_->width(), rect.height());
    }
  });
}

int BlameView::gutterWidth() const { return fontMetrics().horizontalAdvance(QLatin1Char('m')) * 46; }

void BlameView::setBlame(const QString& text, BlameChunkList chunks) {
  chunks_ = std::move(chunks);
  setPlainText(text);
  chunkOfLine_.assign(static_cast<size_t>(blockCount()) + 1, -1);
  oldest_ = newest_ = 0;
  for (size_t i = 0; i < chunks_.size(); ++i) {
    const BlameChunk& chunk = chunks_[i];
    for (int line = chunk.lineNumber; line < chunk.lineNumber + chunk.lineCount; ++line) {
      if (line >= 1 && line < static_cast<int>(chunkOfLine_.size())) chunkOfLine_[static_cast<size_t>(line)] = static_cast<int>(i);
    }
    const qint64 seconds = chunk.revisionInfo->authorDate.toSecsSinceEpoch();
    if (i == 0 || seconds < oldest_) oldest_ = seconds;
    if (i == 0 || seconds > newest_) newest_ = seconds;
  }
  gutter_->update();
}

const BlameChunk* BlameView::chunkAtLine(int line) const {
  if (line < 1 || line >= static_cast<int>(chunkOfLine_.size())) return nullptr;
  const int index = chunkOfLine_[static_cast<size_t>(line)];
  return index < 0 ? nullptr : &chunks_[static_cast<size_t>(index)];
}

QString BlameView::chunkTitle(const BlameChunk& chunk, const QDateTime& now) {
  const auto& info = *chunk.revisionInfo;
  return QStringLiteral("%1  %2  %3  %4")
      .arg(info.sha.left(7), info.author, CommitListModel::relativeDate(info.authorDate, now), info.message);
}

double BlameView::age(const BlameChunk& chunk) const {
  if (newest_ <= oldest_) return 1.0;
  return double(chunk.revisionInfo->authorDate.toSecsSinceEpoch() - oldest_) / double(newest_ - oldest_);
}

void BlameView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  const QRect area = contentsRect();
  gutter_->setGeometry(QRect(area.left(), area.top(), gutterWidth(), area.height()));
}

void BlameView::paintGutter(QPaintEvent* event) {
  QPainter painter(gutter_);
  const QPalette& pal = palette();
  const bool dark = pal.color(QPalette::Base).lightness() < 128;
  const QColor base = pal.color(QPalette::Base);
  const QColor accent = dark ? QColor(0xd9, 0x8c, 0x2b) : QColor(0xe0, 0x8a, 0x1e);
  painter.fillRect(event->rect(), base);
  const QDateTime now = QDateTime::currentDateTimeUtc();
  const int width = gutter_->width();
  QTextBlock block = firstVisibleBlock();
  int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
  while (block.isValid() && top <= event->rect().bottom()) {
    const int height = qRound(blockBoundingRect(block).height());
    const int line = block.blockNumber() + 1;
    if (const BlameChunk* chunk = chunkAtLine(line)) {
      // Older runs fade towards the background.
      const double weight = 0.08 + 0.42 * age(*chunk);
      QColor tint;
      tint.setRgbF(base.redF() + (accent.redF() - base.redF()) * weight, base.greenF() + (accent.greenF() - base.greenF()) * weight,
                   base.blueF() + (accent.blueF() - base.blueF()) * weight);
      painter.fillRect(0, top, width - 4, height, tint);
      if (line == chunk->lineNumber) {
        painter.setPen(pal.color(QPalette::Mid));
        painter.drawLine(0, top, width, top);
        painter.setPen(pal.color(QPalette::Text));
        const QRect textRect(6, top, width - 14, height);
        painter.drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft,
                         fontMetrics().elidedText(chunkTitle(*chunk, now), Qt::ElideRight, textRect.width()));
      }
    }
    block = block.next();
    top += height;
  }
}

void BlameView::gutterPressed(const QPoint& position, bool context, const QPoint& globalPosition) {
  const QTextCursor cursor = cursorForPosition(QPoint(0, position.y()));
  const BlameChunk* chunk = chunkAtLine(cursor.blockNumber() + 1);
  if (!chunk) return;
  if (context) {
    Q_EMIT revisionContextMenuRequested(chunk->revisionInfo->sha, globalPosition);
  } else {
    Q_EMIT revisionClicked(chunk->revisionInfo->sha);
  }
}
