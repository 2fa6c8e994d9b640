#pragma once
#include <optional>

#include "Models/Reference.h"

class Tag final : public Reference {
 public:
  Tag(QString sha, QString fullReference, QString name, QString fullName, QDateTime committerDate,
      std::optional<QString> dereferencedSha)
      : Reference(std::move(sha), std::move(fullReference), std::move(name), std::move(fullName), std::move(committerDate)),
        dereferencedSha(std::move(dereferencedSha)) {}

  Kind kind() const override { return Kind::tag; }

  // The commit an annotated tag points at; absent for a lightweight tag, whose sha is the commit.
  std::optional<QString> dereferencedSha;

  // The commit the tag stands for, annotated or not.
  const QString& commitSha() const { return dereferencedSha ? *dereferencedSha : sha; }

 protected:
  bool sameDetails(const Reference& other) const override {
    return dereferencedSha == static_cast<const Tag&>(other).dereferencedSha;
  }
};

using TagPtr = std::shared_ptr<const Tag>;
