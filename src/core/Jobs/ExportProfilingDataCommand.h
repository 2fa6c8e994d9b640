#pragma once
// Writes the jobs of the open repository windows, with the profiling events of their
// progress objects, as a trace file in the trace-event JSON format, then reveals it.
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Jobs/Job.h"

class ExportProfilingDataCommand {
 public:
  // One open window that has a repository: its folder and its queue's history.
  struct Window {
    QString repositoryPath;
    std::vector<std::shared_ptr<Job>> userJobs;
  };

  using Reveal = std::function<void(const QString& filePath)>;

  // Writes "jelv-<date>.trace" into `directory` (the system's temporary folder when empty)
  // and hands the path to `reveal` (the file manager when not given). Gives the path, or
  // nothing when the file could not be written.
  static std::optional<QString> execute(const std::vector<Window>& windows, const QString& directory = {},
                                        const Reveal& reveal = {});

  // {"events": [...]} in window order; a job without both stamps is left out.
  static QJsonDocument traceDocument(const std::vector<Window>& windows);
  static QJsonArray jobEvents(const Job& job, qint64 pid);
  // The events' process id: a stable hash of the folder's last path component.
  static qint64 processId(const QString& repositoryPath);
  // "jelv-<medium date> <medium time>.trace" with characters unfit for file names replaced.
  static QString fileName(const QDateTime& now);
  // Microseconds since 1970 at a resolution of one millisecond.
  static qint64 timestamp(const QDateTime& time);

  static void revealInFileManager(const QString& filePath);
};
