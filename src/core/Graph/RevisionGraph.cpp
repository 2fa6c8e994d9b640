#include "Graph/RevisionGraph.h"

#include <unordered_map>

#include "Extensions/Stopwatch.h"
#include "Models/Tag.h"

namespace {

std::optional<Sha> shaOf(const QString& hex) { return Sha::fromHex(QStringView(hex)); }

// The commit a reference stands for: an annotated tag names its tag object, but the
// history holds the commit behind it.
std::optional<Sha> commitOf(const Reference& reference) {
  if (reference.kind() == Reference::Kind::tag) return shaOf(static_cast<const Tag&>(reference).commitSha());
  return shaOf(reference.sha);
}

// Where the revisions to show start from; empty means all of them.
std::unordered_set<Sha> startingPoints(const RevisionGraphSource& source, bool anyCollapsed) {
  std::unordered_set<Sha> starts;
  const RepositoryReferences& references = source.references;
  const RevisionGraphOptions& options = source.options;
  // A detached HEAD has no reference of its own, and the checked-out commit must stay.
  const auto addDetachedHead = [&] {
    if (references.activeBranch || !references.head) return;
    if (auto head = shaOf(*references.head)) starts.insert(*head);
  };

  if (!references.filtered.isEmpty()) {
    addDetachedHead();
    for (const ReferencePtr& reference : references.all) {
      if (!references.filtered.contains(reference->fullReference)) continue;
      if (auto sha = commitOf(*reference)) starts.insert(*sha);
    }
  } else if (options.hideRemoteBranches || options.hideTags || options.showFirstParent || anyCollapsed) {
    addDetachedHead();
    for (const ReferencePtr& reference : references.all) {
      if (options.hideRemoteBranches && reference->kind() == Reference::Kind::remoteBranch) continue;
      if (options.hideTags && reference->kind() == Reference::Kind::tag) continue;
      if (auto sha = commitOf(*reference)) starts.insert(*sha);
    }
  }
  return starts;
}

}  // namespace

void RevisionGraph::update(std::shared_ptr<const RevisionGraphSource> source) {
  Stopwatch stopwatch(QStringLiteral("RevisionGraph"));
  source_ = std::move(source);
  revisions_.clear();
  if (!source_ || !source_->revisions) return;
  const RevisionList& all = *source_->revisions;
  const bool firstParentMode = source_->options.showFirstParent;

  std::unordered_map<Sha, std::vector<RevisionPtr>> stashesByParent;
  if (!source_->options.hideStashes) {
    for (const StashRevisionPtr& stash : source_->stashes) {
      if (stash && !stash->parents().empty()) stashesByParent[stash->parents()[0]].push_back(stash);
    }
  }
  const auto appendWithStashes = [&](const RevisionPtr& revision) {
    if (!stashesByParent.empty()) {
      auto found = stashesByParent.find(revision->sha());
      if (found != stashesByParent.end()) revisions_.insert(revisions_.end(), found->second.begin(), found->second.end());
    }
    revisions_.push_back(revision);
  };

  std::unordered_set<Sha> starts = startingPoints(*source_, !collapsedRevisions_.empty());
  revisions_.reserve(all.size() + source_->stashes.size());
  if (starts.empty()) {
    for (const RevisionPtr& revision : all) appendWithStashes(revision);
    return;
  }

  // git lists children before parents, so by the time a revision comes up, every
  // child that could show or hide it has been seen. Shown wins over hidden.
  std::unordered_set<Sha> shown;
  std::unordered_set<Sha> hidden;
  for (const RevisionPtr& revision : all) {
    const Sha& sha = revision->sha();
    const auto parents = revision->parents();
    const bool collapsed = collapsedRevisions_.contains(sha);

    if (hidden.erase(sha) > 0) {
      for (const Sha& parent : parents) {
        if (!shown.contains(parent)) hidden.insert(parent);
      }
      starts.erase(sha);
    }
    if (shown.erase(sha) == 0 && starts.erase(sha) == 0) continue;

    if (firstParentMode == collapsed) {
      shown.insert(parents.begin(), parents.end());
    } else if (!parents.empty()) {
      shown.insert(parents[0]);
      hidden.insert(parents.begin() + 1, parents.end());
    }
    appendWithStashes(revision);
  }
}

std::optional<int> RevisionGraph::row(const std::optional<Sha>& sha) const {
  if (!sha) return std::nullopt;
  for (size_t i = 0; i < revisions_.size(); ++i) {
    if (revisions_[i]->sha() == *sha) return static_cast<int>(i);
  }
  return std::nullopt;
}

std::optional<int> RevisionGraph::row(const QString& abbreviatedSha) const {
  if (abbreviatedSha.isEmpty() || abbreviatedSha.size() > Sha::hexLength) return std::nullopt;
  // Compare nibble by nibble instead of printing every sha.
  std::vector<uint8_t> nibbles;
  nibbles.reserve(static_cast<size_t>(abbreviatedSha.size()));
  for (QChar c : abbreviatedSha) {
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9') {
      nibbles.push_back(static_cast<uint8_t>(u - u'0'));
    } else if (u >= u'a' && u <= u'f') {
      nibbles.push_back(static_cast<uint8_t>(u - u'a' + 10));
    } else if (u >= u'A' && u <= u'F') {
      nibbles.push_back(static_cast<uint8_t>(u - u'A' + 10));
    } else {
      return std::nullopt;
    }
  }
  for (size_t row = 0; row < revisions_.size(); ++row) {
    const auto& bytes = revisions_[row]->sha().bytes();
    bool matches = true;
    for (size_t i = 0; i < nibbles.size() && matches; ++i) {
      const uint8_t byte = bytes[i / 2];
      matches = ((i % 2 == 0) ? byte >> 4 : byte & 0xf) == nibbles[i];
    }
    if (matches) return static_cast<int>(row);
  }
  return std::nullopt;
}

bool RevisionGraph::isCollapsed(const Sha& sha) const {
  const bool inSet = collapsedRevisions_.contains(sha);
  return showFirstParent() ? !inSet : inSet;
}

void RevisionGraph::collapse(const Sha& sha) { setMembership(sha, !showFirstParent()); }

void RevisionGraph::expand(const Sha& sha) { setMembership(sha, showFirstParent()); }

void RevisionGraph::setMembership(const Sha& sha, bool member) {
  if (member) {
    collapsedRevisions_.insert(sha);
  } else {
    collapsedRevisions_.erase(sha);
  }
}

std::span<const Sha> RevisionGraph::graphParents(const Revision& revision) const {
  const auto parents = revision.parents();
  if (parents.size() <= 1) return parents;
  const bool collapsed = !collapsedRevisions_.empty() && collapsedRevisions_.contains(revision.sha());
  const bool allParents = showFirstParent() ? collapsed : !collapsed;
  return allParents ? parents : parents.first(1);
}
