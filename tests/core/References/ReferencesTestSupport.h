#pragma once
// Helpers of the reference tests: captured log lines and fixed commit dates.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <mutex>

#include "Logging/AdvancedLogger.h"

// Collects what is logged while it lives.
class LogCapture {
 public:
  LogCapture() {
    lines().clear();
    AdvancedLogger::setCaptureHook(&capture);
  }
  ~LogCapture() { AdvancedLogger::setCaptureHook(nullptr); }
  QStringList messages() const {
    std::lock_guard lock(mutex());
    return lines();
  }
  bool contains(const QString& text) const { return messages().contains(text); }

 private:
  static void capture(AdvancedLogger::Level, const QString& message) {
    std::lock_guard lock(mutex());
    lines() << message;
  }
  static QStringList& lines() {
    static QStringList value;
    return value;
  }
  static std::mutex& mutex() {
    static std::mutex value;
    return value;
  }
};

// Sets author and committer dates for the git commands run while it lives.
class FixedDates {
 public:
  FixedDates(const QByteArray& author, const QByteArray& committer) {
    qputenv("GIT_AUTHOR_DATE", author);
    qputenv("GIT_COMMITTER_DATE", committer);
  }
  ~FixedDates() {
    qunsetenv("GIT_AUTHOR_DATE");
    qunsetenv("GIT_COMMITTER_DATE");
  }
};
