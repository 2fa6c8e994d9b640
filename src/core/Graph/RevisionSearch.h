#pragma once
// The matches of the running search as rows of the commit list. git prints the matches
// mostly in the list's own order, so each one is looked for from the row of the last: the
// walk over all matches costs about one pass over the list, not one per match.
#include <QString>
#include <optional>
#include <unordered_set>
#include <vector>

#include "Graph/RevisionGraph.h"
#include "Models/RevisionSearchQuery.h"

struct RevisionSearchResult {
  RevisionSearchType type = RevisionSearchType::message;
  QString searchString;
  std::unordered_set<Sha> matchRevisions;  // found so far
};

class RevisionSearch {
 public:
  explicit RevisionSearch(const RevisionGraph* revisionGraph = nullptr) : revisionGraph_(revisionGraph) {}

  void setRevisionGraph(const RevisionGraph* graph) { revisionGraph_ = graph; }
  // A new search: no matches yet, the walk starts at the top.
  void start(RevisionSearchType type, const QString& searchString);
  // No search: nothing is marked.
  void clear();

  // The row of a match, walking forward from the last one and then, for a match out of
  // order, from the top; none when the sha is not listed (a hidden commit), and then
  // nothing is recorded.
  std::optional<int> recordMatch(const Sha& sha);
  // The rows changed (a refresh, a filter): finds the matches' rows again.
  void relocate();

  bool isMatch(const Sha& sha) const { return searchResult_ && searchResult_->matchRevisions.contains(sha); }
  const std::optional<RevisionSearchResult>& searchResult() const { return searchResult_; }
  int lastSearchMatchIndex() const { return lastSearchMatchIndex_; }
  // The rows of the matches in list order; holds only what recordMatch found.
  const std::vector<int>& matchRows() const { return matchRows_; }

 private:
  const RevisionGraph* revisionGraph_ = nullptr;
  std::optional<RevisionSearchResult> searchResult_;
  int lastSearchMatchIndex_ = 0;
  std::vector<int> matchRows_;
};
