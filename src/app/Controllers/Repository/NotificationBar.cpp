#include "Controllers/Repository/NotificationBar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "UI/Appearance.h"

NotificationBar::NotificationBar(QWidget* parent) : QFrame(parent) {
  setObjectName(QStringLiteral("notificationBar"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  tint();
  Appearance::follow(this, [this] { tint(); });
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

void NotificationBar::tint() {
  // Amber of the window's own lightness, so the window text stays readable on it.
  QPalette p = palette();
  p.setColor(QPalette::Window, Appearance::isDark(p) ? QColor(0x5a, 0x4a, 0x1a) : QColor(0xff, 0xf4, 0xce));
  setPalette(p);
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
