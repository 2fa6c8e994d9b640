#pragma once
#include <QString>

#include "Models/FileContent/DiffFileContent.h"

// The whole text that "git diff" printed, parsed later on the view's queue.
class TextDiffFileContent final : public DiffFileContent {
 public:
  TextDiffFileContent(ChangedFilePtr file, QString diffString) : DiffFileContent(std::move(file)), diffString(std::move(diffString)) {}
  Kind kind() const override { return Kind::text; }

  QString diffString;
};
