#include "Services/UrlSchemeHandlerRegistry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringList>

#include "Logging/AdvancedLogger.h"

namespace {

const QString defaultSection = QStringLiteral("[Default Applications]");
const QString addedSection = QStringLiteral("[Added Associations]");

QString mimeType(const QString& scheme) { return QStringLiteral("x-scheme-handler/") + scheme; }

// Sets "key=value" in the section, adding the section at the end if it is missing.
// With append, the value joins a ';'-separated list instead of replacing it.
void setEntry(QStringList& lines, const QString& section, const QString& key, const QString& value, bool append) {
  int sectionStart = -1;
  for (int i = 0; i < lines.size(); ++i) {
    if (lines[i].trimmed() == section) {
      sectionStart = i;
      break;
    }
  }
  if (sectionStart < 0) {
    if (!lines.isEmpty() && !lines.last().trimmed().isEmpty()) lines << QString();
    lines << section << key + QLatin1Char('=') + value + (append ? QStringLiteral(";") : QString());
    return;
  }
  int end = sectionStart + 1;
  while (end < lines.size() && !lines[end].trimmed().startsWith(QLatin1Char('['))) ++end;
  for (int i = sectionStart + 1; i < end; ++i) {
    const QString line = lines[i].trimmed();
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    if (equals < 0 || line.left(equals).trimmed() != key) continue;
    if (!append) {
      lines[i] = key + QLatin1Char('=') + value;
      return;
    }
    QStringList values = line.mid(equals + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    values.removeAll(value);
    values.prepend(value);
    lines[i] = key + QLatin1Char('=') + values.join(QLatin1Char(';')) + QLatin1Char(';');
    return;
  }
  // After the section's last entry, before any blank lines that end it.
  int insertAt = end;
  while (insertAt > sectionStart + 1 && lines[insertAt - 1].trimmed().isEmpty()) --insertAt;
  lines.insert(insertAt, key + QLatin1Char('=') + value + (append ? QStringLiteral(";") : QString()));
}

}  // namespace

QString UrlSchemeHandlerRegistry::mimeAppsPath() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)).filePath(QStringLiteral("mimeapps.list"));
}

QString UrlSchemeHandlerRegistry::defaultHandler(const QString& mimeApps, const QString& scheme) {
  bool inSection = false;
  for (const QString& raw : mimeApps.split(QLatin1Char('\n'))) {
    const QString line = raw.trimmed();
    if (line.startsWith(QLatin1Char('['))) {
      inSection = line == defaultSection;
      continue;
    }
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    if (!inSection || equals < 0 || line.left(equals).trimmed() != mimeType(scheme)) continue;
    // The first of a ';'-separated list wins.
    return line.mid(equals + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts).value(0).trimmed();
  }
  return {};
}

QString UrlSchemeHandlerRegistry::withDefaultHandler(const QString& mimeApps, const QString& scheme, const QString& desktopId) {
  QStringList lines = mimeApps.split(QLatin1Char('\n'));
  if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
  setEntry(lines, defaultSection, mimeType(scheme), desktopId, false);
  setEntry(lines, addedSection, mimeType(scheme), desktopId, true);
  return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

bool UrlSchemeHandlerRegistry::isDefaultHandler(const QString& scheme) {
  QFile file(mimeAppsPath());
  if (!file.open(QIODevice::ReadOnly)) return false;
  return defaultHandler(QString::fromUtf8(file.readAll()), scheme) == desktopId();
}

bool UrlSchemeHandlerRegistry::setDefaultHandler(const QString& scheme) {
  QString text;
  QFile existing(mimeAppsPath());
  if (existing.open(QIODevice::ReadOnly)) text = QString::fromUtf8(existing.readAll());
  existing.close();
  QDir().mkpath(QFileInfo(mimeAppsPath()).path());
  QSaveFile file(mimeAppsPath());
  if (!file.open(QIODevice::WriteOnly) || file.write(withDefaultHandler(text, scheme, desktopId()).toUtf8()) < 0 ||
      !file.commit()) {
    LOG_ERROR(QStringLiteral("Cannot make Jelv the handler of '%1': %2").arg(scheme, file.errorString()));
    return false;
  }
  LOG_INFO(QStringLiteral("Jelv is the default handler of '%1' now").arg(scheme));
  return true;
}
