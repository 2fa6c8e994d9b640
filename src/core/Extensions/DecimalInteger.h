#pragma once
// Strict decimal integers as git prints them: an optional sign and digits, nothing
// else (no blanks), and no overflow. QString::toLongLong would accept blanks around.
#include <QByteArrayView>
#include <QStringView>
#include <cstdint>
#include <limits>
#include <optional>

namespace DecimalInteger {

namespace detail {
inline char32_t codeAt(QByteArrayView text, qsizetype at) { return static_cast<unsigned char>(text[at]); }
inline char32_t codeAt(QStringView text, qsizetype at) { return text[at].unicode(); }

template <typename Text>
std::optional<int64_t> parse(Text text) {
  const auto size = text.size();
  if (size == 0) return std::nullopt;
  qsizetype i = 0;
  bool negative = false;
  const auto charAt = [&text](qsizetype at) { return codeAt(text, at); };
  if (charAt(0) == U'-' || charAt(0) == U'+') {
    negative = charAt(0) == U'-';
    i = 1;
    if (size == 1) return std::nullopt;
  }
  uint64_t value = 0;
  const uint64_t limit = negative ? uint64_t(std::numeric_limits<int64_t>::max()) + 1 : uint64_t(std::numeric_limits<int64_t>::max());
  for (; i < size; ++i) {
    const char32_t c = charAt(i);
    if (c < U'0' || c > U'9') return std::nullopt;
    const uint64_t digit = c - U'0';
    if (value > (limit - digit) / 10) return std::nullopt;
    value = value * 10 + digit;
  }
  return negative ? static_cast<int64_t>(0 - value) : static_cast<int64_t>(value);
}

}  // namespace detail

inline std::optional<int64_t> parse(QByteArrayView text) { return detail::parse(text); }
inline std::optional<int64_t> parse(QStringView text) { return detail::parse(text); }

}  // namespace DecimalInteger
