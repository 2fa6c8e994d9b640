#include "Models/RevisionInfo.h"

#include "Extensions/DecimalInteger.h"
#include "Logging/AdvancedLogger.h"

std::optional<RevisionInfo> RevisionInfo::parse(const QString& record) {
  const QString separator = fieldSeparator();
  const QStringList parts = record.split(separator);
  if (parts.size() < 4) {
    LOG_ERROR(QStringLiteral("Cannot parse revision info in '%1'").arg(record));
    return std::nullopt;
  }
  const auto seconds = DecimalInteger::parse(QStringView(parts.at(2)));
  if (!seconds) {
    LOG_ERROR(QStringLiteral("Cannot parse date in '%1'").arg(record));
    return std::nullopt;
  }
  RevisionInfo info;
  info.sha = parts.at(0);
  info.author = parts.at(1);
  info.authorDate = QDateTime::fromSecsSinceEpoch(*seconds, Qt::UTC);
  // A message may itself hold the separator; it keeps everything behind the third one.
  info.message = parts.mid(3).join(separator);
  return info;
}
