#include "Controls/Diff/DiffTextView.h"

#include <QPainter>
#include <QTextBlock>

#include "Controls/Diff/DiffColors.h"
#include "Controls/GitOutputView.h"
#include "UI/Appearance.h"

namespace {
class Gutter : public QWidget {
 public:
  explicit Gutter(DiffTextView* view) : QWidget(view), view_(view) {}
  QSize sizeHint() const override { return {view_->gutterWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { view_->paintGutter(event); }

 private:
  DiffTextView* view_;
};

DiffRowColors colorsFor(UnifiedDiffRow::Kind kind, bool dark) {
  switch (kind) {
    case UnifiedDiffRow::Kind::added: return diffRowColors(DiffRowStyle::added, dark);
    case UnifiedDiffRow::Kind::removed: return diffRowColors(DiffRowStyle::removed, dark);
    case UnifiedDiffRow::Kind::hunkHeader: return diffRowColors(DiffRowStyle::header, dark);
    default: return {};
  }
}
}  // namespace

DiffTextView::DiffTextView(QWidget* parent) : QPlainTextEdit(parent), gutter_(new Gutter(this)) {
  setReadOnly(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setFont(GitOutputView::codeFont());
  GitOutputView::followCodeFont(this, [this] { setViewportMargins(gutterWidth(), 0, 0, 0); });
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  Appearance::follow(this, [this] { colorRows(); });
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy) {
      gutter_->scroll(0, dy);
    } else {
      gutter_->update(0, rect.y(), gutter_->width(), rect.height());
    }
  });
}

int DiffTextView::gutterWidth() const { return fontMetrics().horizontalAdvance(QLatin1Char('9')) * (digits_ * 2 + 3) + 8; }

void DiffTextView::setRows(std::vector<UnifiedDiffRow> rows) {
  rows_ = std::move(rows);
  qint64 maxLine = 1;
  QString text;
  for (const auto& row : rows_) {
    maxLine = std::max({maxLine, row.oldLine, row.newLine});
    const QChar sign = row.kind == UnifiedDiffRow::Kind::added     ? QLatin1Char('+')
                       : row.kind == UnifiedDiffRow::Kind::removed ? QLatin1Char('-')
                                                                   : QLatin1Char(' ');
    text += (row.kind == UnifiedDiffRow::Kind::hunkHeader || row.kind == UnifiedDiffRow::Kind::noNewline ? QString() : QString(sign)) + row.text;
    text += QLatin1Char('\n');
  }
  if (!text.isEmpty()) text.chop(1);
  digits_ = static_cast<int>(QString::number(maxLine).size());
  setPlainText(text);
  setViewportMargins(gutterWidth(), 0, 0, 0);
  colorRows();
}

void DiffTextView::colorRows() {
  const bool dark = Appearance::isDark(palette());
  QList<QTextEdit::ExtraSelection> selections;
  QTextBlock block = document()->firstBlock();
  for (const auto& row : rows_) {
    if (!block.isValid()) break;
    const DiffRowColors colors = colorsFor(row.kind, dark);
    if (colors.background.isValid()) {
      QTextEdit::ExtraSelection selection;
      selection.format.setBackground(colors.background);
      selection.format.setProperty(QTextFormat::FullWidthSelection, true);
      if (row.kind == UnifiedDiffRow::Kind::hunkHeader) selection.format.setForeground(palette().color(QPalette::PlaceholderText));
      selection.cursor = QTextCursor(block);
      selections << selection;
    }
    block = block.next();
  }
  setExtraSelections(selections);
  gutter_->update();
}

void DiffTextView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  const QRect cr = contentsRect();
  gutter_->setGeometry(QRect(cr.left(), cr.top(), gutterWidth(), cr.height()));
}

void DiffTextView::paintGutter(QPaintEvent* event) {
  QPainter painter(gutter_);
  const bool dark = palette().color(QPalette::Base).lightness() < 128;
  painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
  painter.setFont(font());
  const int digitWidth = fontMetrics().horizontalAdvance(QLatin1Char('9'));
  const int columnWidth = digitWidth * (digits_ + 1);
  QTextBlock block = firstVisibleBlock();
  int number = block.blockNumber();
  int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
  while (block.isValid() && top <= event->rect().bottom()) {
    const int height = qRound(blockBoundingRect(block).height());
    if (number < static_cast<int>(rows_.size())) {
      const auto& row = rows_[static_cast<size_t>(number)];
      const DiffRowColors colors = colorsFor(row.kind, dark);
      if (colors.gutter.isValid()) painter.fillRect(0, top, gutter_->width(), height, colors.gutter);
      // Quiet numbers would fade into the tinted gutter of a changed row.
      painter.setPen(palette().color(colors.gutter.isValid() ? QPalette::Text : QPalette::PlaceholderText));
      if (row.oldLine > 0) painter.drawText(0, top, columnWidth, height, Qt::AlignRight | Qt::AlignVCenter, QString::number(row.oldLine));
      if (row.newLine > 0) painter.drawText(columnWidth, top, columnWidth, height, Qt::AlignRight | Qt::AlignVCenter, QString::number(row.newLine));
    }
    block = block.next();
    top += height;
    ++number;
  }
}
