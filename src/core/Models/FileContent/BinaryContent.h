#pragma once
#include "Models/FileContent/Content.h"

// A file that isn't shown as text; the view tells its size.
class BinaryContent : public Content {
 public:
  BinaryContent(QString filepath, bool isStaged, qint64 size) : Content(std::move(filepath), isStaged), size(size) {}
  Kind kind() const override { return Kind::binary; }

  qint64 size = 0;
};
