#pragma once
// The decoration of each visible row: is it HEAD, reachable from HEAD, ahead of or
// behind the upstream, and which references point at it. Made lazily, a block of
// rows at a time, in row order, because reachability and ahead/behind flow from
// children to parents.
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "Graph/RevisionGraph.h"
#include "Models/DecoratedRevision.h"
#include "Models/Reference.h"

class RevisionCollectionView {
 public:
  static constexpr int blockSize = 1024;

  // Starts over for new rows: forgets all decoration and rebuilds the references by
  // commit. The graph must outlive its use here.
  void reset(const RevisionGraph* repositoryGraph);

  // Decorates up to the end of the block of `row`; then decoratedRevision(row) is valid.
  void precalculate(int row);
  const DecoratedRevision& decoratedRevision(int row) const { return decoratedRevisions_[static_cast<size_t>(row)]; }
  int lastPrecalculatedRow() const { return lastPrecalculatedRow_; }

  // References at a commit; annotated tags count at the commit they point at.
  const ReferenceList& references(const Sha& sha) const;

 private:
  DecoratedRevision decorate(int row);
  void startAheadBehind();

  const RevisionGraph* repositoryGraph_ = nullptr;
  std::unordered_map<Sha, ReferenceList> referencesBySha_;
  std::vector<DecoratedRevision> decoratedRevisions_;
  int lastPrecalculatedRow_ = -1;
  std::optional<Sha> head_;
  bool hasBranchFilter_ = false;
  std::optional<std::unordered_set<Sha>> reachableChildren_;
  std::optional<std::unordered_set<Sha>> aheadChildren_;
  std::optional<std::unordered_set<Sha>> behindChildren_;
};
