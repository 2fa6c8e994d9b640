#pragma once
#include <optional>

#include "Models/FileContent/DiffFileContent.h"
#include "Models/FileContent/LfsPointer.h"

// Both pointers of a file that Git LFS manages.
class LfsFileContent final : public DiffFileContent {
 public:
  LfsFileContent(ChangedFilePtr file, std::optional<LfsPointer> oldPointer, std::optional<LfsPointer> currentPointer, bool isImage)
      : DiffFileContent(std::move(file)), old(std::move(oldPointer)), current(std::move(currentPointer)), isImage(isImage) {}
  Kind kind() const override { return Kind::lfs; }

  std::optional<LfsPointer> old;
  std::optional<LfsPointer> current;
  bool isImage = false;
};
