#include "Models/NetworkProtocol.h"

QString networkProtocolText(NetworkProtocol protocol) {
  return protocol == NetworkProtocol::ssh ? QStringLiteral("ssh") : QStringLiteral("https");
}

std::optional<NetworkProtocol> networkProtocolFromText(const QString& text) {
  if (text == QLatin1String("ssh")) return NetworkProtocol::ssh;
  if (text == QLatin1String("https")) return NetworkProtocol::https;
  return std::nullopt;
}
