#pragma once
#include <optional>

#include "Models/FileContent/DiffFileContent.h"

// A binary file that isn't shown; only its sizes are.
class UnknownBinaryFileContent final : public DiffFileContent {
 public:
  UnknownBinaryFileContent(ChangedFilePtr file, std::optional<qint64> oldSize, std::optional<qint64> newSize)
      : DiffFileContent(std::move(file)), oldSize(oldSize), newSize(newSize) {}
  Kind kind() const override { return Kind::unknownBinary; }

  std::optional<qint64> oldSize;
  std::optional<qint64> newSize;
};
