#pragma once
// UTF-8 text in a single allocation behind one pointer: a revision's subject costs its
// bytes plus four, against 24 bytes of header and two bytes a character in a QString.
#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <memory>

class CompactText {
 public:
  CompactText() = default;
  // The bytes must be UTF-8; fromText makes sure of it.
  explicit CompactText(QByteArrayView utf8);
  static CompactText fromText(const QString& text) { return CompactText(QByteArrayView(text.toUtf8())); }

  CompactText(const CompactText& other) : CompactText(other.utf8()) {}
  CompactText& operator=(const CompactText& other);
  CompactText(CompactText&&) noexcept = default;
  CompactText& operator=(CompactText&&) noexcept = default;

  QByteArrayView utf8() const;
  QString toString() const { return QString::fromUtf8(utf8()); }
  bool isEmpty() const { return !data_; }

  bool operator==(const CompactText& other) const { return utf8() == other.utf8(); }

 private:
  std::unique_ptr<char[]> data_;  // uint32 length, then the bytes; empty text holds nothing
};
