#pragma once
#include <QByteArray>

#include "Models/FileContent/BinaryContent.h"

class ImageContent final : public BinaryContent {
 public:
  ImageContent(QString filepath, bool isStaged, QByteArray data)
      : BinaryContent(std::move(filepath), isStaged, data.size()), data(std::move(data)) {}
  Kind kind() const override { return Kind::image; }

  QByteArray data;
};
