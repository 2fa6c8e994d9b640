#include "Models/CompactText.h"

#include <cstring>

CompactText::CompactText(QByteArrayView utf8) {
  if (utf8.isEmpty()) return;
  const auto length = static_cast<uint32_t>(utf8.size());
  data_.reset(new char[sizeof length + length]);
  std::memcpy(data_.get(), &length, sizeof length);
  std::memcpy(data_.get() + sizeof length, utf8.data(), length);
}

CompactText& CompactText::operator=(const CompactText& other) {
  if (this != &other) *this = CompactText(other.utf8());
  return *this;
}

QByteArrayView CompactText::utf8() const {
  if (!data_) return {};
  uint32_t length = 0;
  std::memcpy(&length, data_.get(), sizeof length);
  return QByteArrayView(data_.get() + sizeof length, length);
}
