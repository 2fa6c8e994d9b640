#pragma once
// Collects what the process logger writes while an instance lives.
#include <QString>
#include <QStringList>
#include <mutex>

#include "Logging/AdvancedLogger.h"

class LogCapture {
 public:
  LogCapture() {
    clear();
    AdvancedLogger::setCaptureHook(&LogCapture::hook);
  }
  ~LogCapture() { AdvancedLogger::setCaptureHook(nullptr); }

  QStringList lines() const {
    std::lock_guard guard(lock());
    return store();
  }
  void clear() {
    std::lock_guard guard(lock());
    store().clear();
  }

 private:
  static std::mutex& lock() {
    static std::mutex m;
    return m;
  }
  static QStringList& store() {
    static QStringList s;
    return s;
  }
  static void hook(AdvancedLogger::Level, const QString& message) {
    std::lock_guard guard(lock());
    store().append(message);
  }
};
