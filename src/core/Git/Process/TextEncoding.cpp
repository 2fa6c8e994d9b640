#include "Git/Process/TextEncoding.h"

#include <QStringDecoder>

#include "Logging/AdvancedLogger.h"

namespace {

// Fast path: plain ASCII needs no validation.
bool isAscii(const char* data, qsizetype size) {
  for (qsizetype i = 0; i < size; ++i) {
    if (static_cast<unsigned char>(data[i]) >= 0x80) return false;
  }
  return true;
}

std::optional<QString> decodeUtf8(const char* data, qsizetype size) {
  if (isAscii(data, size)) return QString::fromLatin1(data, size);
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder.decode(QByteArrayView(data, size));
  if (decoder.hasError()) return std::nullopt;
  return text;
}

}  // namespace

std::optional<QString> decodeString(const char* data, qsizetype size, TextEncoding defaultEncoding) {
  if (defaultEncoding == TextEncoding::utf8) {
    if (auto text = decodeUtf8(data, size)) return text;
  }
  // ISO Latin 1 maps every byte to a character, so this cannot fail.
  return QString::fromLatin1(data, size);
}

std::optional<QByteArray> encodeString(const QString& text, TextEncoding encoding) {
  if (encoding == TextEncoding::utf8) return text.toUtf8();
  for (QChar c : text) {
    if (c.unicode() > 0xFF) return std::nullopt;
  }
  return text.toLatin1();
}
