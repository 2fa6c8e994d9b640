#include "Logging/AdvancedLogger.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <atomic>
#include <mutex>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace AdvancedLogger {
namespace {

const char* const kLoggerName = "-- ** ** ** --";

// Console prefix per level; '%*' in the console pattern.
class LevelSymbolFlag final : public spdlog::custom_flag_formatter {
 public:
  void format(const spdlog::details::log_msg& msg, const std::tm&, spdlog::memory_buf_t& dest) override {
    std::string_view symbol;
    switch (msg.level) {
      case spdlog::level::debug: symbol = "◽️"; break;
      case spdlog::level::info: symbol = "🔷"; break;
      case spdlog::level::warn: symbol = "⚠️"; break;
      case spdlog::level::err: symbol = "❌"; break;
      case spdlog::level::critical: symbol = "‼️"; break;
      default: symbol = " "; break;
    }
    dest.append(symbol.data(), symbol.data() + symbol.size());
  }
  std::unique_ptr<custom_flag_formatter> clone() const override { return std::make_unique<LevelSymbolFlag>(); }
};

std::mutex setupMutex;
std::shared_ptr<spdlog::logger> logger;
bool hasFileSink = false;
QString filePath;
std::atomic<CaptureHook> captureHook{nullptr};

std::shared_ptr<spdlog::logger> ensureLogger() {
  std::lock_guard lock(setupMutex);
  if (!logger) {
    auto console = std::make_shared<spdlog::sinks::stderr_sink_mt>();
    auto formatter = std::make_unique<spdlog::pattern_formatter>();
    formatter->add_flag<LevelSymbolFlag>('*').set_pattern("%H:%M:%S.%e %* %! (%s:%#) %v");
    console->set_formatter(std::move(formatter));
    const char* level = std::getenv("JELV_LOG_LEVEL");
    console->set_level(level ? spdlog::level::from_str(level) : spdlog::level::info);
    logger = std::make_shared<spdlog::logger>(kLoggerName, console);
    logger->set_level(spdlog::level::debug);
    logger->flush_on(spdlog::level::warn);
  }
  return logger;
}

spdlog::level::level_enum toSpdlog(Level level) {
  switch (level) {
    case Level::debug: return spdlog::level::debug;
    case Level::info: return spdlog::level::info;
    case Level::warning: return spdlog::level::warn;
    case Level::error: return spdlog::level::err;
    case Level::severe: return spdlog::level::critical;
  }
  return spdlog::level::info;
}

}  // namespace

QString defaultLogDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/org.jelv.Jelv/Logs");
}

QString logFilePath() {
  std::lock_guard lock(setupMutex);
  return filePath;
}

void setup(const QString& logDirectory) {
  auto log = ensureLogger();
  std::lock_guard lock(setupMutex);
  if (hasFileSink || logDirectory.isEmpty()) return;
  if (!QDir().mkpath(logDirectory)) return;
  const QString path = logDirectory + QStringLiteral("/Jelv.log");
  try {
    auto file = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path.toStdString());
    file->set_pattern("%Y-%m-%d %H:%M:%S.%e [%n] [%l] %! (%s:%#) %v");
    file->set_level(spdlog::level::debug);
    log->sinks().push_back(file);
    hasFileSink = true;
    filePath = path;
  } catch (const spdlog::spdlog_ex&) {
    // Logging to the console is still possible; the file is optional.
  }
}

QString redactSecrets(const QString& text) {
  static const QRegularExpression credentials(QStringLiteral("([A-Za-z][A-Za-z0-9+.-]*://[^/@\\s:]*):[^/@\\s]+@"));
  if (!text.contains(QLatin1Char('@'))) return text;
  QString copy = text;
  copy.replace(credentials, QStringLiteral("\\1:***@"));
  return copy;
}

void write(Level level, const QString& message, const spdlog::source_loc& location) {
  auto log = ensureLogger();
  const QString clean = redactSecrets(message);
  if (auto hook = captureHook.load()) hook(level, clean);
  const QByteArray utf8 = clean.toUtf8();
  log->log(location, toSpdlog(level), std::string_view(utf8.constData(), static_cast<size_t>(utf8.size())));
}

void flush() { ensureLogger()->flush(); }

void setCaptureHook(CaptureHook hook) { captureHook.store(hook); }

}  // namespace AdvancedLogger
