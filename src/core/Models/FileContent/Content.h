#pragma once
// One file at one revision, for the plain file view. The view switches on kind().
#include <QString>
#include <memory>

class Content {
 public:
  enum class Kind { text, binary, lfs, image };

  Content(QString filepath, bool isStaged) : filepath(std::move(filepath)), isStaged(isStaged) {}
  virtual ~Content() = default;
  virtual Kind kind() const = 0;

  QString filepath;
  bool isStaged = false;
};

using ContentPtr = std::shared_ptr<const Content>;
