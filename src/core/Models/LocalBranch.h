#pragma once
#include <optional>

#include "Models/Branch.h"

class LocalBranch final : public Branch {
 public:
  LocalBranch(QString sha, QString fullReference, QString name, QString fullName, QDateTime committerDate, bool isActive,
              std::optional<QString> upstreamFullReference)
      : Branch(std::move(sha), std::move(fullReference), std::move(name), std::move(fullName), std::move(committerDate)),
        isActive(isActive), upstreamFullReference(std::move(upstreamFullReference)) {}

  Kind kind() const override { return Kind::localBranch; }

  bool isActive = false;                         // the checked-out branch
  std::optional<QString> upstreamFullReference;  // "refs/remotes/origin/main"

  // "origin/main": the upstream without "refs/remotes/".
  std::optional<QString> upstreamName() const {
    if (!upstreamFullReference || !upstreamFullReference->startsWith(remotesPrefix())) return std::nullopt;
    return upstreamFullReference->mid(remotesPrefix().size());
  }
  // "origin": the first path component of the upstream name.
  std::optional<QString> remoteName() const {
    auto upstream = upstreamName();
    if (!upstream) return std::nullopt;
    return upstream->section(QLatin1Char('/'), 0, 0);
  }

 protected:
  bool sameDetails(const Reference& other) const override {
    const auto& branch = static_cast<const LocalBranch&>(other);
    return isActive == branch.isActive && upstreamFullReference == branch.upstreamFullReference;
  }

 private:
  static QString remotesPrefix() { return QStringLiteral("refs/remotes/"); }
};

using LocalBranchPtr = std::shared_ptr<const LocalBranch>;
