#pragma once
#include <QFrame>
#include <optional>

#include "Models/RepositoryStateNotification.h"

class QAction;
class QHBoxLayout;
class QLabel;
class QPushButton;

// The bar above the commit list while a merge, rebase, cherry-pick, revert or bisect
// is under way; hidden otherwise.
class NotificationBar : public QFrame {
  Q_OBJECT
 public:
  explicit NotificationBar(QWidget* parent = nullptr);
  void setNotification(const std::optional<RepositoryStateNotification>& notification);
  QString message() const;
  // Buttons for these actions, right of the text (Continue, Abort, Good, ...), which
  // follow the actions' state. The bar takes the actions over and drops earlier ones.
  void setActions(const QList<QAction*>& actions);
  QList<QPushButton*> actionButtons() const { return buttons_; }

 Q_SIGNALS:
  void mainActionTriggered();

 private:
  void tint();

  QLabel* label_;
  QPushButton* action_;
  QHBoxLayout* layout_;
  QList<QPushButton*> buttons_;
  QList<QAction*> actions_;  // owned
};
