#pragma once
// An object name held as its 20 raw bytes: half the size of the hex text and free of
// any allocation, which matters when a history holds tens of thousands of them.
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>

class Sha {
 public:
  static constexpr int byteCount = 20;
  static constexpr int hexLength = 40;

  constexpr Sha() = default;

  // Exactly 40 hex digits, either case; anything else gives nothing.
  static std::optional<Sha> fromHex(QByteArrayView hex);
  static std::optional<Sha> fromHex(QStringView hex);

  // 40 lower-case hex digits.
  QString toString() const;
  QByteArray toHex() const;
  // The first `length` hex digits, for display.
  QString abbreviated(int length = 7) const;

  bool isNull() const { return bytes_ == std::array<uint8_t, byteCount>{}; }
  const std::array<uint8_t, byteCount>& bytes() const { return bytes_; }

  // The bytes of a hash are uniformly spread already; the first eight serve as its hash.
  size_t hashValue() const {
    size_t value = 0;
    std::memcpy(&value, bytes_.data(), sizeof value);
    return value;
  }

  auto operator<=>(const Sha&) const = default;
  bool operator==(const Sha&) const = default;

 private:
  std::array<uint8_t, byteCount> bytes_{};
};

inline size_t qHash(const Sha& sha, size_t seed = 0) { return sha.hashValue() ^ seed; }

template <>
struct std::hash<Sha> {
  size_t operator()(const Sha& sha) const noexcept { return sha.hashValue(); }
};
