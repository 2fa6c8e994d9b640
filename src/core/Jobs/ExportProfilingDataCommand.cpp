#include "Jobs/ExportProfilingDataCommand.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonObject>
#include <QLocale>
#include <QSaveFile>
#include <QUrl>

#include "Logging/AdvancedLogger.h"

namespace {

QString phase(JobProgress::ProfileEventType type) {
  switch (type) {
    case JobProgress::ProfileEventType::startGroup: return QStringLiteral("b");
    case JobProgress::ProfileEventType::endGroup: return QStringLiteral("e");
    case JobProgress::ProfileEventType::start: return QStringLiteral("B");
    case JobProgress::ProfileEventType::end: return QStringLiteral("E");
    case JobProgress::ProfileEventType::instant: return QStringLiteral("n");
  }
  return QStringLiteral("n");
}

QJsonObject event(qint64 pid, const QString& ph, const QString& name, int jobId, const QDateTime& time) {
  return QJsonObject{{QStringLiteral("pid"), pid},
                     {QStringLiteral("cat"), QString()},
                     {QStringLiteral("ph"), ph},
                     {QStringLiteral("name"), name},
                     {QStringLiteral("id"), QString::number(jobId)},
                     {QStringLiteral("ts"), ExportProfilingDataCommand::timestamp(time)}};
}

}  // namespace

qint64 ExportProfilingDataCommand::timestamp(const QDateTime& time) { return time.toMSecsSinceEpoch() * 1000; }

qint64 ExportProfilingDataCommand::processId(const QString& repositoryPath) {
  // Seed 0: the same folder gets the same id in every run, so traces can be compared.
  return static_cast<qint64>(qHash(QFileInfo(repositoryPath).fileName(), 0) & 0x7fffffff);
}

QJsonArray ExportProfilingDataCommand::jobEvents(const Job& job, qint64 pid) {
  QJsonArray events;
  const auto start = job.startTime();
  const auto finish = job.finishTime();
  if (!start || !finish) return events;
  events.append(event(pid, QStringLiteral("b"), job.name(), job.id(), *start));
  for (const auto& profileEvent : job.progress().profileEvents()) {
    events.append(event(pid, phase(profileEvent.type), profileEvent.name, job.id(), profileEvent.timestamp));
  }
  events.append(event(pid, QStringLiteral("e"), job.name(), job.id(), *finish));
  return events;
}

QJsonDocument ExportProfilingDataCommand::traceDocument(const std::vector<Window>& windows) {
  QJsonArray events;
  for (const auto& window : windows) {
    const qint64 pid = processId(window.repositoryPath);
    for (const auto& job : window.userJobs) {
      for (const auto& e : jobEvents(*job, pid)) events.append(e);
    }
  }
  return QJsonDocument(QJsonObject{{QStringLiteral("events"), events}});
}

QString ExportProfilingDataCommand::fileName(const QDateTime& now) {
  const QLocale locale;
  QString date = locale.toString(now.date(), QStringLiteral("MMM d, yyyy")) + QLatin1Char(' ') +
                 locale.toString(now.time(), QStringLiteral("HH:mm:ss"));
  for (QChar& c : date) {
    if (c.unicode() < 0x20 || QStringLiteral("/\\:*?\"<>|").contains(c)) c = QLatin1Char('-');
  }
  return QStringLiteral("jelv-") + date + QStringLiteral(".trace");
}

std::optional<QString> ExportProfilingDataCommand::execute(const std::vector<Window>& windows, const QString& directory,
                                                           const Reveal& reveal) {
  const QString folder = directory.isEmpty() ? QDir::tempPath() : directory;
  const QString path = QDir(folder).filePath(fileName(QDateTime::currentDateTime()));
  const QByteArray json = traceDocument(windows).toJson(QJsonDocument::Compact);
  QSaveFile file(path);
  if (json.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.commit()) {
    LOG_ERROR(QStringLiteral("Cannot export profile data to filepath"));
    return std::nullopt;
  }
  if (reveal) {
    reveal(path);
  } else {
    revealInFileManager(path);
  }
  return path;
}

void ExportProfilingDataCommand::revealInFileManager(const QString& filePath) {
  QDBusMessage message = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
  message << QStringList{QUrl::fromLocalFile(filePath).toString()} << QString();
  QDBusConnection::sessionBus().call(message, QDBus::NoBlock);
}
