#include "Controls/Diff/DiffSelectionPopoverController.h"

#include <QVBoxLayout>
#include <QPainter>
#include <QPushButton>

namespace {
QString linesTitle(const QString& verb, qint64 count) {
  return count == 1 ? QStringLiteral("%1 Line").arg(verb) : QStringLiteral("%1 Lines").arg(verb);
}
}  // namespace

DiffSelectionPopoverController::DiffSelectionPopoverController(QWidget* parent) : QFrame(parent) {
  setFrameShape(QFrame::NoFrame);
  setAutoFillBackground(true);
  setCursor(Qt::ArrowCursor);
  stage_ = new QPushButton(this);
  discard_ = new QPushButton(this);
  for (QPushButton* button : {stage_, discard_}) {
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::NoFocus);  // the keyboard stays in the text
  }
  // As wide as the longest label either button shows.
  stage_->setText(QStringLiteral("Discard 999 Lines"));
  const int width = stage_->sizeHint().width();
  for (QPushButton* button : {stage_, discard_}) button->setFixedWidth(width);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3, 3, 3, 3);
  layout->setSpacing(4);
  // The same actions from the keyboard, in the diff text.
  stage_->setToolTip(tr("Space or Return"));
  discard_->setToolTip(tr("Delete"));
  layout->addWidget(stage_);
  layout->addWidget(discard_);
  connect(stage_, &QPushButton::clicked, this, &DiffSelectionPopoverController::toggleStage);
  connect(discard_, &QPushButton::clicked, this, &DiffSelectionPopoverController::discard);
  setTarget(false, false, 0);
}

void DiffSelectionPopoverController::setTarget(bool staged, bool lines, qint64 changedLines) {
  const QString verb = staged ? QStringLiteral("Unstage") : QStringLiteral("Stage");
  stage_->setText(lines ? linesTitle(verb, changedLines) : verb + QStringLiteral(" Hunk"));
  discard_->setText(lines ? linesTitle(QStringLiteral("Discard"), changedLines) : QStringLiteral("Discard Hunk"));
  discard_->setVisible(!staged);
  // A selection of context only changes nothing.
  stage_->setEnabled(!lines || changedLines > 0);
  discard_->setEnabled(!lines || changedLines > 0);
  adjustSize();
}

void DiffSelectionPopoverController::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  // The accent of the hunk marker, so the bar stands out on any row colour.
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
