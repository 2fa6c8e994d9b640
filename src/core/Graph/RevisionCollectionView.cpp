#include "Graph/RevisionCollectionView.h"

#include <algorithm>

#include "Extensions/Stopwatch.h"
#include "Models/Tag.h"

namespace {
std::optional<Sha> shaOf(const QString& hex) { return Sha::fromHex(QStringView(hex)); }
}  // namespace

void RevisionCollectionView::reset(const RevisionGraph* repositoryGraph) {
  repositoryGraph_ = repositoryGraph;
  decoratedRevisions_.clear();
  lastPrecalculatedRow_ = -1;
  reachableChildren_.reset();
  aheadChildren_.reset();
  behindChildren_.reset();
  referencesBySha_.clear();
  head_.reset();
  hasBranchFilter_ = false;

  const auto& source = repositoryGraph_ ? repositoryGraph_->source() : nullptr;
  if (!source) return;
  const RepositoryReferences& references = source->references;
  if (references.head) head_ = shaOf(*references.head);
  hasBranchFilter_ = !references.filtered.isEmpty();
  for (const ReferencePtr& reference : references.all) {
    const QString& commit = reference->kind() == Reference::Kind::tag
                                ? static_cast<const Tag&>(*reference).commitSha()
                                : reference->sha;
    if (auto sha = shaOf(commit)) referencesBySha_[*sha].push_back(reference);
  }
}

const ReferenceList& RevisionCollectionView::references(const Sha& sha) const {
  static const ReferenceList none;
  const auto found = referencesBySha_.find(sha);
  return found == referencesBySha_.end() ? none : found->second;
}

void RevisionCollectionView::precalculate(int row) {
  if (!repositoryGraph_ || row < 0 || lastPrecalculatedRow_ >= row) return;
  const int target = std::min(repositoryGraph_->count(), (row / blockSize + 1) * blockSize);
  const int first = lastPrecalculatedRow_ + 1;
  if (first >= target) return;
  Stopwatch stopwatch(QStringLiteral("Decorate revisions %1-%2").arg(first).arg(target));
  decoratedRevisions_.reserve(static_cast<size_t>(target));
  for (int r = first; r < target; ++r) decoratedRevisions_.push_back(decorate(r));
  lastPrecalculatedRow_ = target - 1;
}

void RevisionCollectionView::startAheadBehind() {
  const RepositoryReferences& references = repositoryGraph_->source()->references;
  const LocalBranchPtr& active = references.activeBranch;
  if (!active || !active->upstreamFullReference) return;
  const ReferencePtr upstream = references.reference(*active->upstreamFullReference);
  if (!upstream) return;
  const auto local = shaOf(active->sha);
  const auto remote = shaOf(upstream->sha);
  if (!local || !remote) return;
  aheadChildren_ = std::unordered_set<Sha>{*local};
  behindChildren_ = std::unordered_set<Sha>{*remote};
}

DecoratedRevision RevisionCollectionView::decorate(int row) {
  if (row == 0) startAheadBehind();
  const RevisionPtr& revision = repositoryGraph_->revision(row);
  const Sha& sha = revision->sha();
  const auto parents = revision->parents();

  DecoratedRevision decorated;
  decorated.revision = revision;
  decorated.isHead = head_ && *head_ == sha;

  // Walks down from both tips at once; where the two histories meet, what is below
  // is shared and neither ahead nor behind.
  if (aheadChildren_ && behindChildren_) {
    const bool inAhead = aheadChildren_->contains(sha);
    const bool inBehind = behindChildren_->contains(sha);
    if (inAhead && inBehind) {
      aheadChildren_.reset();
      behindChildren_.reset();
    } else if (inAhead || inBehind) {
      auto& children = inAhead ? *aheadChildren_ : *behindChildren_;
      children.erase(sha);
      children.insert(parents.begin(), parents.end());
      decorated.aheadBehind = inAhead ? AheadBehindState::ahead : AheadBehindState::behind;
    }
  }

  if (hasBranchFilter_) {
    decorated.isReachable = true;
  } else if (decorated.isHead) {
    reachableChildren_ = std::unordered_set<Sha>(parents.begin(), parents.end());
    decorated.isReachable = true;
  } else if (reachableChildren_ && reachableChildren_->erase(sha) > 0) {
    reachableChildren_->insert(parents.begin(), parents.end());
    decorated.isReachable = true;
  }

  for (const ReferencePtr& reference : references(sha)) decorated.references.push_back(DecoratedReference{reference, {}});
  decorated.isCollapsed = repositoryGraph_->isCollapsed(sha);
  return decorated;
}
