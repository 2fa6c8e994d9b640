#pragma once
#include "Models/Reference.h"

// A mark that "git bisect" left under refs/bisect/.
class BisectMark final : public Reference {
 public:
  BisectMark(QString sha, QString fullReference, QString name, QString fullName, QDateTime committerDate, bool isGood)
      : Reference(std::move(sha), std::move(fullReference), std::move(name), std::move(fullName), std::move(committerDate)),
        isGood(isGood) {}

  Kind kind() const override { return Kind::bisectMark; }

  bool isGood = false;

 protected:
  bool sameDetails(const Reference& other) const override { return isGood == static_cast<const BisectMark&>(other).isGood; }
};
