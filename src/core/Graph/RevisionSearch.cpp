#include "Graph/RevisionSearch.h"

#include <algorithm>

void RevisionSearch::start(RevisionSearchType type, const QString& searchString) {
  searchResult_ = RevisionSearchResult{type, searchString, {}};
  lastSearchMatchIndex_ = 0;
  matchRows_.clear();
}

void RevisionSearch::clear() {
  searchResult_.reset();
  lastSearchMatchIndex_ = 0;
  matchRows_.clear();
}

std::optional<int> RevisionSearch::recordMatch(const Sha& sha) {
  if (!searchResult_ || !revisionGraph_) return std::nullopt;
  const int count = revisionGraph_->count();
  for (int row = lastSearchMatchIndex_; row < count; ++row) {
    if (revisionGraph_->revision(row)->sha() != sha) continue;
    if (searchResult_->matchRevisions.insert(sha).second) matchRows_.push_back(row);
    lastSearchMatchIndex_ = row;
    return row;
  }
  // git orders by date where the list orders by ancestry, so now and then a match lies
  // behind the last one. It is marked all the same; the walk goes on from where it was.
  for (int row = 0; row < lastSearchMatchIndex_ && row < count; ++row) {
    if (revisionGraph_->revision(row)->sha() != sha) continue;
    if (searchResult_->matchRevisions.insert(sha).second) {
      matchRows_.insert(std::lower_bound(matchRows_.begin(), matchRows_.end(), row), row);
    }
    return row;
  }
  return std::nullopt;
}

void RevisionSearch::relocate() {
  matchRows_.clear();
  lastSearchMatchIndex_ = 0;
  if (!searchResult_ || !revisionGraph_ || searchResult_->matchRevisions.empty()) return;
  const int count = revisionGraph_->count();
  for (int row = 0; row < count; ++row) {
    if (searchResult_->matchRevisions.contains(revisionGraph_->revision(row)->sha())) matchRows_.push_back(row);
  }
  if (!matchRows_.empty()) lastSearchMatchIndex_ = matchRows_.back();
}
