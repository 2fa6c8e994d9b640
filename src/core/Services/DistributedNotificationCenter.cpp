#include "Services/DistributedNotificationCenter.h"

#include <QDBusMessage>

#include "Logging/AdvancedLogger.h"

namespace names = DistributedNotificationNames;

bool DistributedNotificationCenter::post(const QString& name, const QString& object) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {
    LOG_WARNING(QStringLiteral("No session bus to post '%1'").arg(name));
    return false;
  }
  QDBusMessage signal = QDBusMessage::createSignal(names::objectPath(), names::interfaceName(), names::signalName());
  signal << name << object;
  return bus.send(signal);
}

DistributedNotificationObserver::DistributedNotificationObserver(QStringList names, QObject* parent)
    : QObject(parent), names_(std::move(names)) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  listening_ = bus.connect(QString(), names::objectPath(), names::interfaceName(), names::signalName(), this,
                           SLOT(notification(QString, QString)));
}

DistributedNotificationObserver::~DistributedNotificationObserver() {
  if (!listening_) return;
  QDBusConnection::sessionBus().disconnect(QString(), names::objectPath(), names::interfaceName(), names::signalName(), this,
                                           SLOT(notification(QString, QString)));
}

void DistributedNotificationObserver::notification(const QString& name, const QString& object) {
  if (names_.contains(name)) Q_EMIT received(name, object);
}
