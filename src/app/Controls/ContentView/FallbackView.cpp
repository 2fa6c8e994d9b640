#include "Controls/ContentView/FallbackView.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Models/FileContent/TextDisplayDecision.h"

FallbackView::FallbackView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("fallbackView"));
  auto* title = new QLabel(TextDisplayDecision::fallbackTitle, this);
  load_ = new QPushButton(TextDisplayDecision::fallbackButton, this);
  load_->setAutoDefault(false);
  connect(load_, &QPushButton::clicked, this, &FallbackView::loadRequested);
  auto* layout = new QVBoxLayout(this);
  layout->addStretch();
  layout->addWidget(title, 0, Qt::AlignHCenter);
  layout->addWidget(load_, 0, Qt::AlignHCenter);
  layout->addStretch();
}
