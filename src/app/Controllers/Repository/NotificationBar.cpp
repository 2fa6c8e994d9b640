#include "Controllers/Repository/NotificationBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

NotificationBar::NotificationBar(QWidget* parent) : QFrame(parent) {
  setObjectName(QStringLiteral("notificationBar"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  QPalette p = palette();
  const bool dark = p.color(QPalette::Window).lightness() < 128;
  p.setColor(QPalette::Window, dark ? QColor(0x5a, 0x4a, 0x1a) : QColor(0xff, 0xf4, 0xce));
  setPalette(p);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(10, 4, 6, 4);
  label_ = new QLabel(this);
  label_->setWordWrap(true);
  action_ = new QPushButton(this);
  layout->addWidget(label_, 1);
  layout->addWidget(action_);
  connect(action_, &QPushButton::clicked, this, &NotificationBar::mainActionTriggered);
  hide();
}

void NotificationBar::setNotification(const std::optional<RepositoryStateNotification>& notification) {
  if (!notification) {
    hide();
    return;
  }
  label_->setText(notification->message);
  action_->setVisible(notification->mainAction.has_value());
  action_->setText(notification->mainAction.value_or(QString()));
  show();
}

QString NotificationBar::message() const { return isHidden() ? QString() : label_->text(); }
