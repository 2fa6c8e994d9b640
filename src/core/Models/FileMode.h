#pragma once
#include <QtGlobal>

// The mode digits of a diff header read as a decimal number: "100644" is 100644, not
// the octal value. Writers print it back with "%06d", so the digits survive unchanged.
struct FileMode {
  qint64 rawValue = 0;

  bool operator==(const FileMode&) const = default;
};
