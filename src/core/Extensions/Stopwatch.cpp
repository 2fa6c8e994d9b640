#include "Extensions/Stopwatch.h"

#include "Logging/AdvancedLogger.h"

Stopwatch::Stopwatch(QString name) : name_(std::move(name)) { timer_.start(); }

Stopwatch::~Stopwatch() {
  LOG_DEBUG(QStringLiteral("%1: %2 ms").arg(name_).arg(static_cast<double>(elapsedMicroseconds()) / 1000.0, 0, 'f', 3));
}
