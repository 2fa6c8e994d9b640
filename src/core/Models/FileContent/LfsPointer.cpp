#include "Models/FileContent/LfsPointer.h"

#include <QStringList>

#include "Logging/AdvancedLogger.h"

const QString LfsPointer::versionLine = QStringLiteral("version https://git-lfs.github.com/spec/v1");

QString LfsPointer::description() const {
  return versionLine + QStringLiteral("\noid sha256:") + sha + QStringLiteral("\nsize ") + QString::number(size) + QLatin1Char('\n');
}

std::optional<LfsPointer> LfsPointer::parse(const QString& output) {
  const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  if (lines.size() != 3) {
    LOG_ERROR(QStringLiteral("Unexpected line count of lfs pointer: '%1'").arg(output));
    return std::nullopt;
  }
  const QStringList oid = lines.at(1).split(QLatin1Char(':'));
  if (oid.size() != 2) return std::nullopt;
  const QStringList size = lines.at(2).split(QLatin1Char(' '));
  if (size.size() != 2) return std::nullopt;
  bool ok = false;
  const qint64 bytes = size.at(1).toLongLong(&ok);
  if (!ok) return std::nullopt;
  return LfsPointer{oid.at(1), bytes};
}

bool LfsPointer::isPointerText(const QString& text) {
  return text.size() >= 121 && text.size() <= 1023 && text.contains(versionLine) && text.contains(QStringLiteral("oid sha256:"));
}
