#include "Services/SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include "Logging/AdvancedLogger.h"

SingleInstance::SingleInstance(const QDBusConnection& connection, QObject* parent)
    : QObject(parent), connection_(connection) {}

SingleInstance::~SingleInstance() {
  if (role_ != Role::primary) return;
  connection_.unregisterObject(objectPath());
  connection_.unregisterService(serviceName());
}

SingleInstance::Role SingleInstance::claim() {
  if (!connection_.isConnected() || !connection_.interface()) return role_ = Role::alone;
  // The object first, so that a launch that sees the name can already call it.
  if (!connection_.registerObject(objectPath(), this, QDBusConnection::ExportScriptableSlots)) {
    LOG_WARNING(QStringLiteral("Cannot export the application object on the session bus"));
    return role_ = Role::alone;
  }
  const auto reply = connection_.interface()->registerService(serviceName(), QDBusConnectionInterface::DontQueueService,
                                                              QDBusConnectionInterface::DontAllowReplacement);
  if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) return role_ = Role::primary;
  connection_.unregisterObject(objectPath());
  return role_ = Role::secondary;
}

bool SingleInstance::forward(const QDBusConnection& connection, const QStringList& arguments, int timeoutMsecs) {
  QDBusMessage call = QDBusMessage::createMethodCall(serviceName(), objectPath(), interfaceName(),
                                                     QStringLiteral("handleArguments"));
  call << arguments;
  const QDBusMessage reply = QDBusConnection(connection).call(call, QDBus::Block, timeoutMsecs);
  if (reply.type() == QDBusMessage::ReplyMessage) return true;
  LOG_WARNING(QStringLiteral("The running instance did not answer: ") + reply.errorMessage());
  return false;
}

void SingleInstance::handleArguments(const QStringList& arguments) { Q_EMIT argumentsReceived(arguments); }
