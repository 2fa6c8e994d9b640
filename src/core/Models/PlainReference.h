#pragma once
#include "Models/Reference.h"

// A commit that no reference of the repository names, such as the other side of a
// merge started from a bare sha; its name is what identified it.
class PlainReference final : public Reference {
 public:
  explicit PlainReference(const QString& shaOrName)
      : Reference(shaOrName, shaOrName, shaOrName, shaOrName, QDateTime()) {}
  PlainReference(QString sha, const QString& name) : Reference(std::move(sha), name, name, name, QDateTime()) {}

  Kind kind() const override { return Kind::plain; }
};
