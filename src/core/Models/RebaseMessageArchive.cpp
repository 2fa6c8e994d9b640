#include "Models/RebaseMessageArchive.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include "Logging/AdvancedLogger.h"

namespace RebaseMessageArchive {

GitVoidResult write(const QString& directory, const QHash<QString, QString>& messages) {
  QJsonObject object;
  for (auto it = messages.begin(); it != messages.end(); ++it) object.insert(it.key(), it.value());
  QSaveFile file(directory + QLatin1Char('/') + fileName());
  if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(object).toJson(QJsonDocument::Compact)) < 0 || !file.commit()) {
    return Error::UnknownException{QStringLiteral("Cannot write %1: %2").arg(file.fileName(), file.errorString())};
  }
  return Unit{};
}

QHash<QString, QString> read(const QString& directory) {
  QHash<QString, QString> messages;
  QFile file(directory + QLatin1Char('/') + fileName());
  if (!file.open(QIODevice::ReadOnly)) return messages;
  const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
  for (auto it = object.begin(); it != object.end(); ++it) {
    if (it.value().isString()) {
      messages.insert(it.key(), it.value().toString());
    } else {
      LOG_WARNING(QStringLiteral("Skipped a message of %1 in %2").arg(it.key(), file.fileName()));
    }
  }
  return messages;
}

std::optional<QString> find(const QHash<QString, QString>& messages, const QString& sha) {
  if (sha.size() < 4) return std::nullopt;
  if (auto it = messages.find(sha); it != messages.end()) return it.value();
  for (auto it = messages.begin(); it != messages.end(); ++it) {
    if (it.key().startsWith(sha) || sha.startsWith(it.key())) return it.value();
  }
  return std::nullopt;
}

}  // namespace RebaseMessageArchive
