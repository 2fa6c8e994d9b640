#include "QuickLaunch/ReferenceCommandProvider.h"

ReferenceCommandProvider::ReferenceCommandProvider(std::vector<ReferencePtr> allReferences, QString headerString)
    : allReferences_(std::move(allReferences)), headerString_(std::move(headerString)) {
  std::erase(allReferences_, nullptr);
}

std::vector<ReferencePtr> ReferenceCommandProvider::references(const RepositoryReferences& references, Kinds kinds) {
  std::vector<ReferencePtr> chosen;
  if (kinds != Kinds::remoteBranches && kinds != Kinds::tags) chosen.insert(chosen.end(), references.localBranches.begin(), references.localBranches.end());
  if (kinds == Kinds::all || kinds == Kinds::branches || kinds == Kinds::remoteBranches) {
    chosen.insert(chosen.end(), references.remoteBranches.begin(), references.remoteBranches.end());
  }
  if (kinds == Kinds::all || kinds == Kinds::tags) chosen.insert(chosen.end(), references.tags.begin(), references.tags.end());
  return chosen;
}

void ReferenceCommandProvider::refresh(const QString& text) {
  items_.clear();
  addSection(headerString_, ranked(allReferences_, text));
}
