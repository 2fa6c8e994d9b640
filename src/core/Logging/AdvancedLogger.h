#pragma once
// The one process-wide logger. Entries carry level, function, file and line; the
// console gets a symbol per level. URLs with embedded credentials are masked before
// anything is written, so a token in a remote URL never reaches a sink.
#include <QString>
#include <spdlog/common.h>

namespace AdvancedLogger {

enum class Level { debug, info, warning, error, severe };

// Creates the console and file sinks. Safe to call more than once; only the first
// call with a directory adds the file sink. Without setup, entries go to the console.
void setup(const QString& logDirectory);
// The default directory: <data location>/org.jelv.Jelv/Logs
QString defaultLogDirectory();
QString logFilePath();

void write(Level level, const QString& message, const spdlog::source_loc& location);
void flush();

// Masks "scheme://user:secret@" as "scheme://user:***@".
QString redactSecrets(const QString& text);

// Tests capture what is logged through this hook (called after redaction).
using CaptureHook = void (*)(Level, const QString&);
void setCaptureHook(CaptureHook hook);

}  // namespace AdvancedLogger

#define JELV_LOG(level, message) \
  ::AdvancedLogger::write(level, (message), spdlog::source_loc{__FILE__, __LINE__, static_cast<const char*>(__func__)})
#define LOG_DEBUG(message) JELV_LOG(::AdvancedLogger::Level::debug, message)
#define LOG_INFO(message) JELV_LOG(::AdvancedLogger::Level::info, message)
#define LOG_WARNING(message) JELV_LOG(::AdvancedLogger::Level::warning, message)
#define LOG_ERROR(message) JELV_LOG(::AdvancedLogger::Level::error, message)
#define LOG_SEVERE(message) JELV_LOG(::AdvancedLogger::Level::severe, message)
