#include "Services/KeychainManager.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>
#include <libsecret/secret.h>

#include "Logging/AdvancedLogger.h"

namespace {

const SecretSchema* schema() {
  static const SecretSchema value = {
      "org.jelv.Jelv.Secret",
      SECRET_SCHEMA_NONE,
      {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"account", SECRET_SCHEMA_ATTRIBUTE_STRING}, {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
      0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
  return &value;
}

KeychainManager::Status fromError(GError* error) {
  KeychainManager::Status status{KeychainManager::Status::Kind::unhandledError, QString::fromUtf8(error->message)};
  g_error_free(error);
  return status;
}

void logError(const KeychainManager::Status& status, const QString& message) {
  // Not stored is the normal answer of a lookup.
  if (status.kind == KeychainManager::Status::Kind::noPassword || status.kind == KeychainManager::Status::Kind::success) return;
  LOG_ERROR(status.message.isEmpty() ? message : message + QStringLiteral(" (") + status.message + QLatin1Char(')'));
}

bool ok(const KeychainManager::Status& status) { return status.kind == KeychainManager::Status::Kind::success; }

}  // namespace

QByteArray InternetPassword::toJson() const {
  QJsonObject object;
  object.insert(QStringLiteral("username"), username);
  object.insert(QStringLiteral("token"), token);
  object.insert(QStringLiteral("authenticationType"),
                authenticationType == AuthenticationType::https ? QStringLiteral("https") : QStringLiteral("ssh"));
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<InternetPassword> InternetPassword::fromJson(const QByteArray& json) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (error.error != QJsonParseError::NoError || !document.isObject()) return std::nullopt;
  const QJsonObject object = document.object();
  const QJsonValue username = object.value(QStringLiteral("username"));
  const QJsonValue token = object.value(QStringLiteral("token"));
  const QString type = object.value(QStringLiteral("authenticationType")).toString();
  if (!username.isString() || !token.isString() || (type != QStringLiteral("https") && type != QStringLiteral("ssh"))) return std::nullopt;
  return InternetPassword{username.toString(), token.toString(), type == QStringLiteral("https") ? AuthenticationType::https : AuthenticationType::ssh};
}

KeychainManager::Status KeychainManager::save(const QString& service, const QString& account, const QByteArray& secret) {
  GError* error = nullptr;
  const QByteArray s = service.toUtf8(), a = account.toUtf8();
  // The store replaces an item with the same attributes: one item per service and account.
  const QByteArray label = s + " (" + a + ")";
  SecretValue* value = secret_value_new(secret.constData(), secret.size(), "text/plain");
  GHashTable* attributes = g_hash_table_new(g_str_hash, g_str_equal);
  g_hash_table_insert(attributes, const_cast<char*>("service"), const_cast<char*>(s.constData()));
  g_hash_table_insert(attributes, const_cast<char*>("account"), const_cast<char*>(a.constData()));
  const gboolean stored = secret_password_storev_binary_sync(schema(), attributes, SECRET_COLLECTION_DEFAULT, label.constData(), value,
                                                             nullptr, &error);
  g_hash_table_unref(attributes);
  secret_value_unref(value);
  if (!stored) return error ? fromError(error) : Status{Status::Kind::unhandledError, {}};
  return {};
}

KeychainManager::Status KeychainManager::read(const QString& service, const QString& account, QByteArray* secret) {
  GError* error = nullptr;
  const QByteArray s = service.toUtf8(), a = account.toUtf8();
  SecretValue* value = secret_password_lookup_binary_sync(schema(), nullptr, &error, "service", s.constData(), "account", a.constData(), nullptr);
  if (error) return fromError(error);
  if (!value) return {Status::Kind::noPassword, {}};
  gsize length = 0;
  const gchar* bytes = secret_value_get(value, &length);
  *secret = QByteArray(bytes, static_cast<qsizetype>(length));
  secret_value_unref(value);
  return {};
}

KeychainManager::Status KeychainManager::remove(const QString& service, const QString& account) {
  GError* error = nullptr;
  const QByteArray s = service.toUtf8(), a = account.toUtf8();
  const gboolean removed = secret_password_clear_sync(schema(), nullptr, &error, "service", s.constData(), "account", a.constData(), nullptr);
  if (error) return fromError(error);
  if (!removed) return {Status::Kind::noPassword, {}};
  return {};
}

KeychainManager::Status KeychainManager::accounts(const QString& service, QStringList* accounts) {
  GError* error = nullptr;
  const QByteArray s = service.toUtf8();
  GList* items = nullptr;
  // Right after an item is replaced, gnome-keyring may still list the old one and then
  // fail with "No such secret item"; a second search a moment later no longer does.
  for (int attempt = 0; attempt < 3; ++attempt) {
    if (error) {
      g_clear_error(&error);
      QThread::msleep(50);
    }
    items = secret_password_search_sync(schema(), SECRET_SEARCH_ALL, nullptr, &error, "service", s.constData(), nullptr);
    if (!error) break;
  }
  if (error) return fromError(error);
  for (GList* item = items; item; item = item->next) {
    GHashTable* attributes = secret_retrievable_get_attributes(SECRET_RETRIEVABLE(item->data));
    if (const auto* account = static_cast<const char*>(g_hash_table_lookup(attributes, "account"))) {
      accounts->append(QString::fromUtf8(account));
    }
    g_hash_table_unref(attributes);
  }
  g_list_free_full(items, g_object_unref);
  if (accounts->isEmpty()) return {Status::Kind::noPassword, {}};
  return {};
}

std::optional<QString> KeychainManager::keychainServiceName(const QUrl& url) {
  if (url.scheme().isEmpty()) {
    LOG_ERROR(QStringLiteral("Url does not contain scheme. '%1'").arg(url.toString(QUrl::RemoveUserInfo)));
    return std::nullopt;
  }
  if (url.host().isEmpty()) {
    LOG_ERROR(QStringLiteral("Url does not contain host. '%1'").arg(url.toString(QUrl::RemoveUserInfo)));
    return std::nullopt;
  }
  QString name = QStringLiteral("Jelv.%1.%2").arg(url.scheme(), url.host());
  if (url.port() != -1) name += QLatin1Char(':') + QString::number(url.port());
  return name;
}

void KeychainManager::setInternetPassword(const QUrl& url, const QString& username, const QString& password) const {
  const QString shown = url.toString(QUrl::RemoveUserInfo);
  const auto service = keychainServiceName(url);
  if (!service) return;
  const Status status = save(*service, username, InternetPassword{username, password, AuthenticationType::https}.toJson());
  if (ok(status)) {
    LOG_INFO(QStringLiteral("Saved https password for '%1' successfully.").arg(shown));
  } else {
    logError(status, QStringLiteral("Can't save https password for '%1' in KeyChain").arg(shown));
  }
}

std::optional<QString> KeychainManager::getInternetPassword(const QUrl& url, const QString& username) const {
  const auto service = keychainServiceName(url);
  if (!service) return std::nullopt;
  QByteArray secret;
  const Status status = read(*service, username, &secret);
  if (!ok(status)) {
    logError(status, QStringLiteral("Can't read https password for '%1' from KeyChain").arg(url.toString(QUrl::RemoveUserInfo)));
    return std::nullopt;
  }
  const auto record = InternetPassword::fromJson(secret);
  if (!record) {
    LOG_ERROR(QStringLiteral("Can't decode https password data"));
    return std::nullopt;
  }
  return record->token;
}

QStringList KeychainManager::getUsernames(const QUrl& url, AuthenticationType) const {
  const auto service = keychainServiceName(url);
  if (!service) return {};
  QStringList names;
  const Status status = accounts(*service, &names);
  if (!ok(status)) logError(status, QStringLiteral("Can't get usernames for '%1' in KeyChain.").arg(url.toString(QUrl::RemoveUserInfo)));
  return names;
}

void KeychainManager::setSshPassphrase(const QString& filepath, const QString& passphrase) const {
  const Status status = save(sshPassphraseService(filepath), filepath, passphrase.toUtf8());
  if (ok(status)) {
    LOG_INFO(QStringLiteral("Saved passphrase for '%1' successfully.").arg(filepath));
  } else {
    logError(status, QStringLiteral("Can't save SSH passphrase passphrase for '%1' from KeyChain").arg(filepath));
  }
}

std::optional<QString> KeychainManager::getSshPassphrase(const QString& filepath) const {
  QByteArray secret;
  Status status = read(sshPassphraseService(filepath), filepath, &secret);
  if (ok(status)) return QString::fromUtf8(secret);
  logError(status, QStringLiteral("Can't read SSH passphrase passphrase '%1' from KeyChain").arg(filepath));
  LOG_INFO(QStringLiteral("Trying to read SSH passphrase in legacy format..."));
  status = read(legacySshPassphraseService(filepath), filepath, &secret);
  if (!ok(status)) {
    logError(status, QStringLiteral("Can't read SSH passphrase passphrase '%1' from KeyChain").arg(filepath));
    return std::nullopt;
  }
  LOG_INFO(QStringLiteral("Importing SSH passphrase from legacy format"));
  const QString passphrase = QString::fromUtf8(secret);
  setSshPassphrase(filepath, passphrase);
  return passphrase;
}

void KeychainManager::setGitServiceAccountSession(const QString& host, const QString& username, const QByteArray& authentication) const {
  const Status status = save(accountSessionService(host), username, authentication);
  if (ok(status)) {
    LOG_INFO(QStringLiteral("Saved service authentication for '%1' successfully.").arg(host));
  } else {
    logError(status, QStringLiteral("Can't save service authentication for '%1' in KeyChain").arg(host));
  }
}

std::optional<QByteArray> KeychainManager::getGitServiceAccountSession(const QString& host, const QString& username) const {
  QByteArray secret;
  const Status status = read(accountSessionService(host), username, &secret);
  if (!ok(status)) {
    logError(status, QStringLiteral("Can't read service authentication for '%1' from KeyChain").arg(host));
    return std::nullopt;
  }
  if (QJsonDocument::fromJson(secret).isNull()) {
    LOG_ERROR(QStringLiteral("Can't decode GitServiceAuthentication data"));
    return std::nullopt;
  }
  return secret;
}

void KeychainManager::removeGitServiceAccountSession(const QString& host, const QString& username) const {
  const Status status = remove(accountSessionService(host), username);
  if (ok(status)) {
    LOG_INFO(QStringLiteral("Deleted service authentication for '%1' successfully.").arg(host));
  } else {
    logError(status, QStringLiteral("Can't delete service authentication for '%1' in KeyChain.").arg(host));
  }
}
