#include "Services/AskPass/AskPassBridge.h"

#include <QCoreApplication>
#include <QDBusMessage>

#include "Logging/AdvancedLogger.h"
#include "Services/DistributedNotificationNames.h"

namespace names = DistributedNotificationNames;

AskPassBridge::AskPassBridge(const QDBusConnection& bus, QObject* parent) : QObject(parent), bus_(bus) {}

bool AskPassBridge::listen() {
  if (!bus_.isConnected()) return false;
  return bus_.connect(QString(), names::objectPath(), names::interfaceName(), names::signalName(), this,
                      SLOT(onNotification(QString, QString)));
}

void AskPassBridge::respond(AskPassResponse::Kind kind, qint64 askPassProcessId, const QString& value) const {
  QDBusMessage signal = QDBusMessage::createSignal(names::objectPath(), names::interfaceName(), names::signalName());
  signal << AskPassResponse::notificationName(kind) << AskPassResponse::encode(QCoreApplication::applicationPid(), askPassProcessId, value);
  QDBusConnection(bus_).send(signal);
}

void AskPassBridge::handle(const QString& json) {
  const auto args = AskPassRequestArgs::decode(json);
  if (!args) return;
  // Another instance's git asks.
  if (args->jelvProcessId != QCoreApplication::applicationPid()) return;
  const AskPassRequest request = AskPassParser::parse(args->arguments);
  if (loadKeychainCredentials(request, args->askPassProcessId)) return;
  if (args->noPrompt) {
    // The helper gives up by itself and git fails quietly.
    LOG_INFO(QStringLiteral("Could not load credentials from keychain. Suppress credential prompting because in background mode"));
    return;
  }
  if (promptHandler_) {
    promptHandler_(*args, request);
  } else {
    respond(AskPassResponse::Kind::cancel, args->askPassProcessId, QString());
  }
}

bool AskPassBridge::loadKeychainCredentials(const AskPassRequest& request, qint64 askPassProcessId) {
  switch (request.kind) {
    case AskPassRequest::Kind::repositoryUsername: {
      const QString shown = request.url.toString(QUrl::RemoveUserInfo);
      LOG_INFO(QStringLiteral("Asked for username for '%1'").arg(shown));
      if (request.url.host().isEmpty()) {
        LOG_ERROR(QStringLiteral("Cannot parse host of url: '%1'").arg(shown));
        return false;
      }
      const QStringList names = keychain_.getUsernames(request.url, AuthenticationType::https);
      LOG_INFO(QStringLiteral("Found %1 accounts for %2").arg(names.size()).arg(request.url.host()));
      if (names.isEmpty()) {
        LOG_INFO(QStringLiteral("Could not found account for '%1'").arg(shown));
        return false;
      }
      LOG_INFO(QStringLiteral("Using '%1'").arg(names.first()));
      respond(AskPassResponse::Kind::username, askPassProcessId, names.first());
      return true;
    }
    case AskPassRequest::Kind::internetPassword: {
      if (request.url.host().isEmpty()) {
        LOG_ERROR(QStringLiteral("Cannot parse host of url: '%1'").arg(request.url.toString(QUrl::RemoveUserInfo)));
        return false;
      }
      QString server = request.url.host();
      if (request.url.port() != -1) server += QLatin1Char(':') + QString::number(request.url.port());
      const auto password = keychain_.getInternetPassword(request.url, request.username);
      if (!password) {
        LOG_INFO(QStringLiteral("Could not found credentials for '%1' for '%2'").arg(request.username, server));
        return false;
      }
      LOG_INFO(QStringLiteral("Using internet password authentication."));
      respond(AskPassResponse::Kind::password, askPassProcessId, *password);
      return true;
    }
    case AskPassRequest::Kind::sshPassphrase: {
      const auto passphrase = keychain_.getSshPassphrase(request.keyPath);
      if (!passphrase) {
        LOG_INFO(QStringLiteral("Could not found passphrase for '%1'").arg(request.keyPath));
        return false;
      }
      respond(AskPassResponse::Kind::password, askPassProcessId, *passphrase);
      return true;
    }
    case AskPassRequest::Kind::genericPassword: return false;
  }
  return false;
}

void AskPassBridge::answer(const AskPassRequest& request, qint64 askPassProcessId, const std::optional<QString>& value,
                           bool remember) const {
  if (!value) {
    respond(AskPassResponse::Kind::cancel, askPassProcessId, QString());
    return;
  }
  respond(request.kind == AskPassRequest::Kind::repositoryUsername ? AskPassResponse::Kind::username : AskPassResponse::Kind::password,
          askPassProcessId, *value);
  // Saved after the answer, so a slow store does not keep git waiting.
  if (!remember) return;
  if (request.kind == AskPassRequest::Kind::sshPassphrase) keychain_.setSshPassphrase(request.keyPath, *value);
  if (request.kind == AskPassRequest::Kind::internetPassword) keychain_.setInternetPassword(request.url, request.username, *value);
}

void AskPassBridge::onNotification(const QString& name, const QString& object) {
  if (name == names::askPasswdRequest()) handle(object);
}
