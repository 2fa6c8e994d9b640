#pragma once
#include <QString>
#include <optional>

// How a remote is reached; also an account's default for clones.
enum class NetworkProtocol { ssh, https };

// "ssh" or "https": the stored and the URL-scheme spelling.
QString networkProtocolText(NetworkProtocol protocol);
std::optional<NetworkProtocol> networkProtocolFromText(const QString& text);
