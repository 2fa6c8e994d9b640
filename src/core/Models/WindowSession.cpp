#include "Models/WindowSession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "Logging/AdvancedLogger.h"

namespace {
const QString kindManager = QStringLiteral("repositoryManager");
const QString kindRepository = QStringLiteral("repository");
}  // namespace

QString WindowSession::preferenceKey() { return QStringLiteral("openWindows"); }

QByteArray WindowSession::encode(const std::vector<WindowSession>& windows) {
  QJsonArray list;
  for (const WindowSession& window : windows) {
    QJsonArray tabs;
    for (const TabSession& tab : window.tabs) {
      QJsonObject entry;
      entry.insert(QStringLiteral("kind"), tab.kind == TabSession::Kind::repository ? kindRepository : kindManager);
      if (tab.kind == TabSession::Kind::repository) entry.insert(QStringLiteral("path"), tab.repositoryPath);
      tabs.append(entry);
    }
    QJsonObject object;
    object.insert(QStringLiteral("geometry"), QString::fromLatin1(window.geometry.toBase64()));
    object.insert(QStringLiteral("tabs"), tabs);
    object.insert(QStringLiteral("currentTab"), window.currentTab);
    list.append(object);
  }
  return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

std::vector<WindowSession> WindowSession::decode(const QByteArray& json) {
  std::vector<WindowSession> windows;
  if (json.trimmed().isEmpty()) return windows;
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (!document.isArray()) {
    LOG_WARNING(QStringLiteral("Cannot read the saved windows: %1").arg(error.errorString()));
    return windows;
  }
  for (const QJsonValue& value : document.array()) {
    const QJsonObject object = value.toObject();
    WindowSession window;
    window.geometry = QByteArray::fromBase64(object.value(QStringLiteral("geometry")).toString().toLatin1());
    int current = object.value(QStringLiteral("currentTab")).toInt(0);
    int index = 0;
    for (const QJsonValue& tabValue : object.value(QStringLiteral("tabs")).toArray()) {
      const QJsonObject tab = tabValue.toObject();
      const QString kind = tab.value(QStringLiteral("kind")).toString();
      const QString path = tab.value(QStringLiteral("path")).toString();
      if (kind == kindManager) {
        window.tabs.push_back({TabSession::Kind::repositoryManager, {}});
      } else if (kind == kindRepository && !path.trimmed().isEmpty()) {
        window.tabs.push_back({TabSession::Kind::repository, path});
      } else {
        LOG_WARNING(QStringLiteral("Dropping a saved tab that cannot be read"));
        if (index < current) --current;  // keep pointing at the same tab
        ++index;
        continue;
      }
      ++index;
    }
    if (window.tabs.empty()) continue;
    window.currentTab = std::clamp(current, 0, int(window.tabs.size()) - 1);
    windows.push_back(std::move(window));
  }
  return windows;
}
