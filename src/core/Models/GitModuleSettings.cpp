#include "Models/GitModuleSettings.h"

#include <QCoreApplication>
#include <QThread>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <cmath>

#include "Logging/AdvancedLogger.h"

namespace {

// Each key is read on its own; the wrong type leaves the default in place.
void readString(const QJsonObject& root, const QString& key, QString& field) {
  const QJsonValue value = root.value(key);
  if (value.isString()) field = value.toString();
}

void readBool(const QJsonObject& root, const QString& key, bool& field) {
  const QJsonValue value = root.value(key);
  if (value.isBool()) field = value.toBool();
}

void readInteger(const QJsonObject& root, const QString& key, int& field) {
  const QJsonValue value = root.value(key);
  if (!value.isDouble()) return;
  const double number = value.toDouble();
  if (std::trunc(number) == number && std::abs(number) <= 1e9) field = static_cast<int>(number);
}

// An array of strings; an element of another type drops out with a log line.
bool readStringList(const QJsonObject& root, const QString& key, QStringList& field) {
  const QJsonValue value = root.value(key);
  if (!value.isArray()) return false;
  QStringList list;
  for (const QJsonValue element : value.toArray()) {
    if (element.isString()) {
      list << element.toString();
    } else {
      LOG_WARNING(QStringLiteral("Skipping a value that is not a string in '%1' of the repository settings").arg(key));
    }
  }
  field = list;
  return true;
}

// QJsonObject orders its keys alphabetically; the file keeps ours, so the object is
// written by hand from values that Qt serialises.
QByteArray jsonValue(const QJsonValue& value) {
  const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
  return wrapped.mid(1, wrapped.size() - 2);  // "[<value>]"
}

}  // namespace

GitModuleSettings GitModuleSettings::decode(const QByteArray& json) {
  GitModuleSettings settings;
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (error.error != QJsonParseError::NoError || !document.isObject()) return settings;
  const QJsonObject root = document.object();
  readString(root, QStringLiteral("draftMessage"), settings.draftMessage);
  if (const QJsonValue key = root.value(QStringLiteral("signingKey")); key.isString()) settings.signingKey = key.toString();
  readBool(root, QStringLiteral("signOff"), settings.signOff);
  // Files written before the rename keep their pins.
  if (!readStringList(root, QStringLiteral("starredReferences"), settings.starredReferences)) {
    readStringList(root, QStringLiteral("pinnedReferences"), settings.starredReferences);
  }
  readStringList(root, QStringLiteral("filterReferences"), settings.filterReferences);
  readInteger(root, QStringLiteral("tabWidth"), settings.tabWidth);
  readBool(root, QStringLiteral("hideTags"), settings.hideTags);
  readBool(root, QStringLiteral("hideRemoteBranches"), settings.hideRemoteBranches);
  readBool(root, QStringLiteral("hideStashes"), settings.hideStashes);
  readBool(root, QStringLiteral("showBugtrackerLinks"), settings.showBugtrackerLinks);
  readBool(root, QStringLiteral("trustSharedCommands"), settings.trustSharedCommands);
  return settings;
}

GitModuleSettings GitModuleSettings::load(const GitModule& module) {
  QFile file(filePath(module));
  if (!file.open(QIODevice::ReadOnly)) return GitModuleSettings();
  return decode(file.readAll());
}

std::optional<QByteArray> GitModuleSettings::encode() const {
  QList<std::pair<const char*, QJsonValue>> entries;
  entries.append({"draftMessage", draftMessage});
  if (signingKey) entries.append({"signingKey", *signingKey});
  entries.append({"signOff", signOff});
  entries.append({"starredReferences", QJsonArray::fromStringList(starredReferences)});
  entries.append({"filterReferences", QJsonArray::fromStringList(filterReferences)});
  entries.append({"tabWidth", tabWidth});
  entries.append({"hideTags", hideTags});
  entries.append({"hideRemoteBranches", hideRemoteBranches});
  entries.append({"hideStashes", hideStashes});
  entries.append({"showBugtrackerLinks", showBugtrackerLinks});
  entries.append({"trustSharedCommands", trustSharedCommands});

  QByteArray json = "{";
  for (const auto& [key, value] : entries) {
    const QByteArray encoded = jsonValue(value);
    if (encoded.isEmpty()) {
      LOG_ERROR(QStringLiteral("Cannot encode settings to JSON."));
      return std::nullopt;
    }
    if (json.size() > 1) json += ',';
    json += jsonValue(QString::fromLatin1(key)) + ':' + encoded;
  }
  json += '}';
  return json;
}

void GitModuleSettings::save(const GitModule& module) const {
  // Every writer loads, changes and saves the whole file: two threads doing so would
  // lose one's change. The main thread is the only writer.
  if (const QCoreApplication* app = QCoreApplication::instance(); app && QThread::currentThread() != app->thread()) {
    LOG_ERROR(QStringLiteral("Settings not written to '%1': only the main thread writes them").arg(filePath(module)));
    return;
  }
  const auto json = encode();
  if (!json) return;
  const QString path = filePath(module);
  // Written beside and renamed over, so a reader never sees half a file.
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(*json) != json->size() || !file.commit()) {
    LOG_ERROR(QStringLiteral("Cannot write settings to '%1'").arg(path));
  }
}
