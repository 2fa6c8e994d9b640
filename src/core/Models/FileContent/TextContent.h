#pragma once
#include "Models/FileContent/Content.h"

class TextContent final : public Content {
 public:
  TextContent(QString filepath, bool isStaged, QString string) : Content(std::move(filepath), isStaged), string(std::move(string)) {}
  Kind kind() const override { return Kind::text; }

  QString string;
};
