#pragma once
// The visible rows of the commit list: the loaded history narrowed by the branch
// filter, hidden tags and remote branches, collapsed merges and first-parent mode,
// with each stash placed just above the commit it was made on.
#include <QString>
#include <memory>
#include <optional>
#include <span>
#include <unordered_set>

#include "Graph/RevisionGraphSource.h"
#include "Models/Revision.h"
#include "Models/Sha.h"

class RevisionGraph {
 public:
  // Rebuilds the visible rows; a null source leaves none.
  void update(std::shared_ptr<const RevisionGraphSource> source);

  const std::shared_ptr<const RevisionGraphSource>& source() const { return source_; }
  const RevisionList& revisions() const { return revisions_; }
  int count() const { return static_cast<int>(revisions_.size()); }
  const RevisionPtr& revision(int row) const { return revisions_[static_cast<size_t>(row)]; }

  // The first row holding the sha.
  std::optional<int> row(const std::optional<Sha>& sha) const;
  // The first row whose sha begins with the given hex digits (either case).
  std::optional<int> row(const QString& abbreviatedSha) const;

  bool showFirstParent() const { return source_ && source_->options.showFirstParent; }

  // In first-parent mode every merge starts collapsed and the set holds the expanded
  // ones; otherwise the set holds the collapsed ones. Callers update() afterwards.
  const std::unordered_set<Sha>& collapsedRevisions() const { return collapsedRevisions_; }
  bool isCollapsed(const Sha& sha) const;
  void collapse(const Sha& sha);
  void expand(const Sha& sha);

  // The parents that the graph draws lanes to: all, or only the first for a collapsed
  // merge.
  std::span<const Sha> graphParents(const Revision& revision) const;

 private:
  void setMembership(const Sha& sha, bool member);

  std::shared_ptr<const RevisionGraphSource> source_;
  RevisionList revisions_;
  std::unordered_set<Sha> collapsedRevisions_;
};
