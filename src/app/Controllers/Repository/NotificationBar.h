#pragma once
#include <QFrame>
#include <optional>

#include "Models/RepositoryStateNotification.h"

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

 Q_SIGNALS:
  void mainActionTriggered();

 private:
  QLabel* label_;
  QPushButton* action_;
};
