#pragma once
// The only access to stored secrets: passwords of HTTPS remotes, passphrases of SSH keys
// and sessions of hosting-service accounts, kept in the desktop's secret service. Every
// failure is logged here and then reads as "not stored"; secrets never reach the log.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

enum class AuthenticationType { ssh, https };

// What an HTTPS password is stored as: a JSON object of these three fields.
struct InternetPassword {
  QString username;
  QString token;
  AuthenticationType authenticationType = AuthenticationType::https;

  QByteArray toJson() const;
  static std::optional<InternetPassword> fromJson(const QByteArray& json);
};

class KeychainManager {
 public:
  // "Jelv.<scheme>.<host>" with ":<port>" when the URL names one; none without a scheme
  // or a host.
  static std::optional<QString> keychainServiceName(const QUrl& url);
  static QString sshPassphraseService(const QString& filepath) { return QStringLiteral("Jelv.ssh.") + filepath; }
  static QString legacySshPassphraseService(const QString& filepath) { return QStringLiteral("SSH: ") + filepath; }
  static QString accountSessionService(const QString& host) { return QStringLiteral("Jelv.account.") + host; }

  void setInternetPassword(const QUrl& url, const QString& username, const QString& password) const;
  std::optional<QString> getInternetPassword(const QUrl& url, const QString& username) const;
  // The user names stored for the URL's service.
  QStringList getUsernames(const QUrl& url, AuthenticationType authenticationType) const;

  void setSshPassphrase(const QString& filepath, const QString& passphrase) const;
  // Reads the old form too and carries it over into the new one.
  std::optional<QString> getSshPassphrase(const QString& filepath) const;

  // The account's authentication as the service client encodes it (JSON).
  void setGitServiceAccountSession(const QString& host, const QString& username, const QByteArray& authentication) const;
  std::optional<QByteArray> getGitServiceAccountSession(const QString& host, const QString& username) const;
  void removeGitServiceAccountSession(const QString& host, const QString& username) const;

  // The raw item operations, for the import of old items and for tests.
  struct Status {
    enum class Kind { success, noPassword, unhandledError, unexpectedPasswordData } kind = Kind::success;
    QString message;  // the store's own words for an unhandled error
  };
  static Status save(const QString& service, const QString& account, const QByteArray& secret);
  static Status read(const QString& service, const QString& account, QByteArray* secret);
  static Status remove(const QString& service, const QString& account);
  static Status accounts(const QString& service, QStringList* accounts);
};
