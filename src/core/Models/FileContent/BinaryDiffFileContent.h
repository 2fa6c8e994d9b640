#pragma once
#include <QByteArray>
#include <optional>

#include "Models/FileContent/DiffFileContent.h"

// Both sides of an image; an absent side means the file was created or deleted.
class BinaryDiffFileContent final : public DiffFileContent {
 public:
  BinaryDiffFileContent(ChangedFilePtr file, std::optional<QByteArray> oldData, std::optional<QByteArray> newData)
      : DiffFileContent(std::move(file)), old(std::move(oldData)), new_(std::move(newData)) {}
  Kind kind() const override { return Kind::binary; }

  std::optional<QByteArray> old;
  std::optional<QByteArray> new_;  // "new" is a keyword
};
