#pragma once
// The references a command's argument can take (a branch to check out, a tag to push),
// under one header that names them.
#include <vector>

#include "Models/RepositoryReferences.h"
#include "QuickLaunch/CommandProvider.h"

class ReferenceCommandProvider : public CommandProvider {
 public:
  enum class Kinds { all, branches, localBranches, remoteBranches, tags };

  ReferenceCommandProvider(std::vector<ReferencePtr> allReferences, QString headerString);
  // Local branches, then remote branches, then tags, each in the snapshot's order.
  static std::vector<ReferencePtr> references(const RepositoryReferences& references, Kinds kinds);

  void refresh(const QString& text) override;

 private:
  std::vector<ReferencePtr> allReferences_;
  QString headerString_;
};
