#include "Models/Sha.h"

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

inline int hexValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

template <typename Text, typename CharAt>
bool parseHex(const Text& hex, CharAt charAt, std::array<uint8_t, Sha::byteCount>& out) {
  if (hex.size() != Sha::hexLength) return false;
  for (int i = 0; i < Sha::byteCount; ++i) {
    const int high = hexValue(charAt(hex, 2 * i));
    const int low = hexValue(charAt(hex, 2 * i + 1));
    if (high < 0 || low < 0) return false;
    out[i] = static_cast<uint8_t>(high << 4 | low);
  }
  return true;
}

}  // namespace

std::optional<Sha> Sha::fromHex(QByteArrayView hex) {
  Sha sha;
  const auto charAt = [](QByteArrayView text, int i) { return static_cast<char16_t>(static_cast<unsigned char>(text[i])); };
  if (!parseHex(hex, charAt, sha.bytes_)) return std::nullopt;
  return sha;
}

std::optional<Sha> Sha::fromHex(QStringView hex) {
  Sha sha;
  const auto charAt = [](QStringView text, int i) { return text[i].unicode(); };
  if (!parseHex(hex, charAt, sha.bytes_)) return std::nullopt;
  return sha;
}

QByteArray Sha::toHex() const {
  QByteArray text(hexLength, Qt::Uninitialized);
  char* out = text.data();
  for (int i = 0; i < byteCount; ++i) {
    out[2 * i] = kHexDigits[bytes_[i] >> 4];
    out[2 * i + 1] = kHexDigits[bytes_[i] & 0xf];
  }
  return text;
}

QString Sha::toString() const { return QString::fromLatin1(toHex()); }

QString Sha::abbreviated(int length) const { return toString().left(length); }
