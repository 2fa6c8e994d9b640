#pragma once
// Named notifications between the processes of one user, as signals on the session bus.
// An observer hears the names it was made for, on the thread it lives on (which needs an
// event loop); posting works from any thread.
#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include "Services/DistributedNotificationNames.h"

namespace DistributedNotificationCenter {
// False when there is no session bus or the signal could not be sent.
bool post(const QString& name, const QString& object);
}  // namespace DistributedNotificationCenter

class DistributedNotificationObserver : public QObject {
  Q_OBJECT
 public:
  explicit DistributedNotificationObserver(QStringList names, QObject* parent = nullptr);
  ~DistributedNotificationObserver() override;

  // False without a session bus: nothing will be heard.
  bool isListening() const { return listening_; }

 Q_SIGNALS:
  void received(const QString& name, const QString& object);

 private Q_SLOTS:
  void notification(const QString& name, const QString& object);

 private:
  QStringList names_;
  bool listening_ = false;
};
