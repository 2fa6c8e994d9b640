#include "Models/FileContent/FileChangeClassifier.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace FileChangeClassifier {

bool isImageFile(const QString& path) {
  const QString lower = path.toLower();
  for (const char* suffix : {".bmp", ".gif", ".png", ".jpg", ".jpeg", ".ico"}) {
    if (lower.endsWith(QLatin1String(suffix))) return true;
  }
  return false;
}

bool isBinaryDiff(const QString& diff) {
  if (diff.isEmpty() || diff.size() > smallDiffLimit) return false;
  static const QRegularExpression binaryLine(QStringLiteral("^Binary files"), QRegularExpression::MultilineOption);
  return binaryLine.match(diff).hasMatch();
}

std::optional<std::pair<LfsPointer, LfsPointer>> findLfsChange(const QString& diff) {
  if (diff.isEmpty() || diff.size() > smallDiffLimit) return std::nullopt;
  static const QRegularExpression pointerLines(QStringLiteral("([-+])oid sha256:(\\b[0-9a-f]{64})\\n([-+])size (\\d*)"));
  std::optional<LfsPointer> sides[2];
  int count = 0;
  auto matches = pointerLines.globalMatch(diff);
  while (matches.hasNext()) {
    const QRegularExpressionMatch match = matches.next();
    if (++count > 2) return std::nullopt;
    bool ok = false;
    const qint64 size = match.captured(4).toLongLong(&ok);
    if (!ok) return std::nullopt;
    // The removed pointer first, then the added one.
    const QString expectedSign = count == 1 ? QStringLiteral("-") : QStringLiteral("+");
    if (match.captured(1) != expectedSign || match.captured(3) != expectedSign) return std::nullopt;
    sides[count - 1] = LfsPointer{match.captured(2), size};
  }
  if (count != 2) return std::nullopt;
  return std::make_pair(*sides[0], *sides[1]);
}

std::optional<SubmoduleShas> parseSubmoduleDiff(const QString& diff, bool detectDirty) {
  static const QRegularExpression withDirty(QStringLiteral("(\\-|\\+)Subproject commit (\\b[0-9a-f]{5,40})(\\-dirty)?"));
  static const QRegularExpression plain(QStringLiteral("(\\-|\\+)Subproject commit (\\b[0-9a-f]{5,40})"));
  auto matches = (detectDirty ? withDirty : plain).globalMatch(diff);
  QList<QRegularExpressionMatch> found;
  while (matches.hasNext()) found << matches.next();
  if (found.size() != 2) return std::nullopt;
  if (found.at(0).captured(1) != QLatin1String("-") || found.at(1).captured(1) != QLatin1String("+")) return std::nullopt;
  return SubmoduleShas{found.at(0).captured(2), found.at(1).captured(2),
                       detectDirty && found.at(1).captured(3) == QLatin1String("-dirty")};
}

std::optional<QString> decodeUtf8(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder(bytes);
  if (decoder.hasError()) return std::nullopt;
  return text;
}

bool readsAsText(const QByteArray& bytes) {
  const qsizetype scanned = std::min<qsizetype>(bytes.size(), 2000);
  int nulCount = 0;
  for (qsizetype i = 0; i < scanned; ++i) {
    if (bytes.at(i) == '\0' && ++nulCount > 5) return false;
  }
  return decodeUtf8(bytes).has_value();
}

}  // namespace FileChangeClassifier
