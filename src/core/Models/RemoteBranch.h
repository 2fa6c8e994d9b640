#pragma once
#include "Models/Branch.h"

class RemoteBranch final : public Branch {
 public:
  RemoteBranch(QString sha, QString fullReference, QString name, QString fullName, QDateTime committerDate, QString remote)
      : Branch(std::move(sha), std::move(fullReference), std::move(name), std::move(fullName), std::move(committerDate)),
        remote(std::move(remote)) {}

  Kind kind() const override { return Kind::remoteBranch; }

  QString remote;  // the remote's name

 protected:
  bool sameDetails(const Reference& other) const override { return remote == static_cast<const RemoteBranch&>(other).remote; }
};

using RemoteBranchPtr = std::shared_ptr<const RemoteBranch>;
