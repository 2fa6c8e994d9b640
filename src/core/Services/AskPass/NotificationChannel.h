#pragma once
// Named notifications between processes of one user, each carrying one text: signals on
// the session bus under one object path and interface. Header only, so the small
// helper programs use the same names without the library.
#include <QString>

namespace NotificationChannel {
inline const QString path = QStringLiteral("/org/jelv/Jelv/Notifications");
inline const QString interface = QStringLiteral("org.jelv.Jelv.Notifications");

inline const QString askPasswdRequest = QStringLiteral("askPasswdRequest");
inline const QString askPasswdResponseUsername = QStringLiteral("askPasswdResponse_Username");
inline const QString askPasswdResponsePassword = QStringLiteral("askPasswdResponse_Password");
inline const QString askPasswdResponseCancel = QStringLiteral("askPasswdResponse_Cancel");
}  // namespace NotificationChannel
