#pragma once
#include "Models/FileContent/BinaryContent.h"
#include "Models/FileContent/LfsPointer.h"

// A pointer file in place of the content; size is that of the real file.
class LfsContent final : public BinaryContent {
 public:
  LfsContent(QString filepath, bool isStaged, LfsPointer pointer, bool isImage)
      : BinaryContent(std::move(filepath), isStaged, pointer.size), lfsPointer(std::move(pointer)), isImage(isImage) {}
  Kind kind() const override { return Kind::lfs; }

  LfsPointer lfsPointer;
  bool isImage = false;
};
