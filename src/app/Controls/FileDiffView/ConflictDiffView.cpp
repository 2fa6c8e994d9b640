#include "Controls/FileDiffView/ConflictDiffView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

#include "UI/Appearance.h"

ConflictDiffView::ConflictDiffView(QWidget* parent) : QWidget(parent) {
  title_ = new QLabel(this);
  title_->setWordWrap(true);
  resolve_ = new QPushButton(tr("Resolve Conflicts…"), this);
  resolve_->setObjectName(QStringLiteral("resolveConflictsButton"));
  resolve_->setAutoDefault(false);
  text_ = new QPlainTextEdit(this);
  text_->setReadOnly(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  QFont font(QStringLiteral("monospace"));
  font.setStyleHint(QFont::Monospace);
  text_->setFont(font);
  auto* header = new QHBoxLayout;
  header->addWidget(title_, 1);
  header->addWidget(resolve_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 0);
  layout->addLayout(header);
  layout->addWidget(text_, 1);
  connect(resolve_, &QPushButton::clicked, this, &ConflictDiffView::resolveRequested);
  Appearance::follow(text_, [this] { colourLines(); });
}

QString ConflictDiffView::diffText() const { return text_->toPlainText(); }

void ConflictDiffView::showDiff(const QString& path, const QString& combinedDiff) {
  const bool deletedSide = combinedDiff.startsWith(QStringLiteral("* Unmerged path"));
  title_->setText(deletedSide ? tr("%1 was deleted on one side and changed on the other.").arg(path)
                              : tr("%1 has merge conflicts.").arg(path));
  text_->setPlainText(combinedDiff);
  colourLines();
}

void ConflictDiffView::colourLines() {
  // The two columns say which side a line comes from: markers and lines of one side only
  // are tinted.
  const bool dark = Appearance::isDark(text_->palette());
  const QColor marker = dark ? QColor(0x5a, 0x3a, 0x1a) : QColor(0xff, 0xd8, 0xb0);
  const QColor added = dark ? QColor(0x1f, 0x4a, 0x2a) : QColor(0xd4, 0xf5, 0xd4);
  const QColor removed = dark ? QColor(0x4a, 0x23, 0x26) : QColor(0xff, 0xe0, 0xe0);
  QList<QTextEdit::ExtraSelection> selections;
  for (QTextBlock block = text_->document()->begin(); block.isValid(); block = block.next()) {
    const QString line = block.text();
    QColor colour;
    if (line.startsWith(QStringLiteral("++<<<<<<<")) || line.startsWith(QStringLiteral("++=======")) ||
        line.startsWith(QStringLiteral("++>>>>>>>")) || line.startsWith(QStringLiteral("++|||||||"))) {
      colour = marker;
    } else if (line.size() >= 2 && !line.startsWith(QStringLiteral("@@@")) && (line[0] == u'+' || line[1] == u'+')) {
      colour = added;
    } else if (line.size() >= 2 && (line[0] == u'-' || line[1] == u'-') && !line.startsWith(QStringLiteral("---"))) {
      colour = removed;
    } else {
      continue;
    }
    QTextEdit::ExtraSelection selection;
    selection.format.setBackground(colour);
    selection.format.setProperty(QTextFormat::FullWidthSelection, true);
    selection.cursor = QTextCursor(block);
    selections << selection;
  }
  text_->setExtraSelections(selections);
}
