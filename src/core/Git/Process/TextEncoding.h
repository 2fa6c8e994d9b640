#pragma once
#include <QByteArray>
#include <QString>
#include <optional>

enum class TextEncoding { utf8, isoLatin1 };

// Decodes bytes in the given encoding, falling back to ISO Latin 1. Gives no text only
// when both fail (which Latin 1, mapping every byte, never does).
std::optional<QString> decodeString(const char* data, qsizetype size, TextEncoding defaultEncoding = TextEncoding::utf8);
inline std::optional<QString> decodeString(const QByteArray& data, TextEncoding defaultEncoding = TextEncoding::utf8) {
  return decodeString(data.constData(), data.size(), defaultEncoding);
}
// The text in the given encoding, or no bytes when a character can't be encoded.
std::optional<QByteArray> encodeString(const QString& text, TextEncoding encoding);
