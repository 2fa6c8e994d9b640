#include "Models/FileContent/TextDisplayDecision.h"

#include <QLocale>

#include "Logging/AdvancedLogger.h"
#include "Models/PatchParser.h"

bool TextDisplayDecision::exceedsLimit(qsizetype utf16Length, bool loadLargeDiff) {
  return !loadLargeDiff && utf16Length > largeTextLimit;
}

TextDisplayDecision TextDisplayDecision::forDiff(const QString& diff, const QString& path, XFilePatch::Location location,
                                                 bool loadLargeDiff) {
  XPatchPtr patch = PatchParser().parse(diff, location);
  if (!patch) {
    LOG_ERROR(QStringLiteral("Cannot parse the changes of '%1'").arg(path));
    return {Kind::unparsable, nullptr};
  }
  if (exceedsLimit(diff.size(), loadLargeDiff)) {
    LOG_INFO(QStringLiteral("Changes for '%1' are too large to display").arg(path));
    return {Kind::tooLarge, nullptr};
  }
  return {Kind::render, std::move(patch)};
}

std::optional<QString> TextDisplayDecision::notLfsTip(qint64 size) {
  if (size < lfsHintSize) return std::nullopt;
  const QString formatted = QLocale(QLocale::English).formattedDataSize(size, 1, QLocale::DataSizeSIFormat);
  return QStringLiteral("File is %1 and is not managed by LFS").arg(formatted);
}
