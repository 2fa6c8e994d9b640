#pragma once
// Collects what the process logs while it is alive, for tests that check log lines.
#include <QString>
#include <QStringList>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "Logging/AdvancedLogger.h"

class LogCapture {
 public:
  LogCapture() {
    std::lock_guard lock(mutex());
    entries().clear();
    AdvancedLogger::setCaptureHook(&capture);
  }
  ~LogCapture() { AdvancedLogger::setCaptureHook(nullptr); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // Every message, or those of one level.
  QStringList messages(std::optional<AdvancedLogger::Level> level = std::nullopt) const {
    std::lock_guard lock(mutex());
    QStringList out;
    for (const auto& entry : entries()) {
      if (!level || entry.first == *level) out << entry.second;
    }
    return out;
  }
  bool contains(const QString& text) const {
    for (const QString& message : messages()) {
      if (message.contains(text)) return true;
    }
    return false;
  }
  void clear() {
    std::lock_guard lock(mutex());
    entries().clear();
  }

 private:
  static std::mutex& mutex() {
    static std::mutex instance;
    return instance;
  }
  static std::vector<std::pair<AdvancedLogger::Level, QString>>& entries() {
    static std::vector<std::pair<AdvancedLogger::Level, QString>> instance;
    return instance;
  }
  static void capture(AdvancedLogger::Level level, const QString& message) {
    std::lock_guard lock(mutex());
    entries().emplace_back(level, message);
  }
};
