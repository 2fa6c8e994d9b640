#pragma once
#include "Models/Reference.h"

// Stands for a detached HEAD.
class HeadReference final : public Reference {
 public:
  using Reference::Reference;
  // The usual form: "HEAD" at the given commit.
  explicit HeadReference(QString sha, QDateTime committerDate = {})
      : Reference(std::move(sha), QStringLiteral("HEAD"), QStringLiteral("HEAD"), QStringLiteral("HEAD"),
                  std::move(committerDate)) {}

  Kind kind() const override { return Kind::head; }
};
