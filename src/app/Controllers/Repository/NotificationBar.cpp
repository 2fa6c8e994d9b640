#include "Controllers/Repository/NotificationBar.h"

#include <QAction>
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
  layout_ = layout;
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
  // The bar's buttons come from setActions; the state's main action is one of them.
  action_->setVisible(false);
  action_->setText(notification->mainAction.value_or(QString()));
  show();
}

QString NotificationBar::message() const { return isHidden() ? QString() : label_->text(); }

void NotificationBar::setActions(const QList<QAction*>& actions) {
  qDeleteAll(buttons_);
  buttons_.clear();
  for (QAction* old : std::as_const(actions_)) {
    if (!actions.contains(old)) old->deleteLater();
  }
  actions_ = actions;
  for (QAction* action : actions) {
    action->setParent(this);
    auto* button = new QPushButton(action->text(), this);
    button->setObjectName(action->objectName() + QStringLiteral("Button"));
    button->setEnabled(action->isEnabled());
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
    layout_->addWidget(button);
    buttons_ << button;
  }
}
