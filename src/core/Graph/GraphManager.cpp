// The lane algorithm. One forward pass over the visible rows, newest first. Between two
// rows there is a list of open lanes, each heading for one commit (its nextSha) and
// carrying an id that picks its colour; a lane's column is simply its index in the
// list. At a row, every lane heading somewhere else passes through; the leftmost lane
// heading for this commit carries it, and any other lane heading for it ends here. The
// carrying lane then heads for the first parent. A commit that no lane leads to is a
// branch tip and opens a lane at the right end. Every further parent of a merge joins
// the first lane already heading for that parent, or opens a new one at the right end.
// git lists children before parents, so nothing needs to look ahead, and only the lanes
// of the previous row are kept.
//
// Deliberate consequences: a new lane's id is the column it was born in, so two lanes
// may share a colour; the first parent never looks for an existing lane, so two lanes
// for one commit can run side by side until it; and when a lane ends, the lanes to its
// right close up at once, which a row shows as a top column that differs from its
// bottom column. Lanes are never reordered.
#include "Graph/GraphManager.h"

#include <algorithm>
#include <cstring>

namespace {

// Every open lane is compared with every row's commit; an out-of-line memcmp for each was
// most of the cost on wide histories. The first eight bytes of two different names
// almost always differ already.
inline bool sameSha(const Sha& a, const Sha& b) {
  std::uint64_t x = 0;
  std::uint64_t y = 0;
  std::memcpy(&x, a.bytes().data(), sizeof x);
  std::memcpy(&y, b.bytes().data(), sizeof y);
  return x == y && a == b;
}

}  // namespace

GraphManager::GraphManager() { graphItems_.reserve(blockSize); }

void GraphManager::reset(const RevisionGraph* revisions) {
  revisions_ = revisions;
  graphItems_ = std::vector<GraphInfo>();
  graphItems_.reserve(blockSize);
  lastPrecalculatedRow_ = -1;
  ctx1_.lines.clear();
  ctx2_.lines.clear();
}

void GraphManager::precalculate(int row) {
  const int count = revisions_ ? revisions_->count() : 0;
  if (row < 0) return;
  const int target = std::min(count, (row / blockSize + 1) * blockSize);
  // Rows are only ever added in order; a request inside what is done changes nothing.
  if (lastPrecalculatedRow_ + 1 >= target) return;

  graphItems_.reserve(static_cast<size_t>(target));
  for (int r = lastPrecalculatedRow_ + 1; r < target; ++r) {
    // The two contexts take turns as the row above and the row being made.
    const bool even = graphItems_.size() % 2 == 0;
    GetRevisionsContext& previous = even ? ctx1_ : ctx2_;
    GetRevisionsContext& next = even ? ctx2_ : ctx1_;
    const Revision& revision = *revisions_->revision(r);
    graphItems_.push_back(computeRow(previous.lines, next.lines, revisions_->graphParents(revision), revision.sha()));
  }
  lastPrecalculatedRow_ = target - 1;
}

GraphInfo GraphManager::computeRow(const std::vector<Line>& previous, std::vector<Line>& next,
                                   std::span<const Sha> parents, const Sha& sha) {
  // Every lane above leaves one segment and at most one lane below. The segments are
  // written into a reused scratch row through a plain pointer and copied out in one
  // piece, which costs far less than growing or initialising each row's own vector.
  thread_local std::vector<GraphLine> scratch;
  const size_t most = previous.size() + parents.size() + 1;
  if (scratch.size() < most) scratch.resize(most);
  GraphLine* segment = scratch.data();
  size_t segments = 0;
  next.resize(previous.size());
  Line* below = next.data();
  int count = 0;  // lanes below so far
  bool found = false;
  int column = -1;
  int lineId = -1;

  for (size_t i = 0; i < previous.size(); ++i) {
    const Line& line = previous[i];
    const int top = static_cast<int>(i);
    if (!sameSha(line.nextSha, sha)) {
      segment[segments++] = GraphLine{line.id, top, count, count};
      below[count++] = line;
    } else if (found) {
      segment[segments++] = GraphLine{line.id, top, column, std::nullopt};
    } else {
      found = true;
      column = count;
      lineId = line.id;
      if (!parents.empty()) {
        below[count++] = Line{line.id, parents[0]};
        segment[segments++] = GraphLine{line.id, top, column, column};
      } else {
        segment[segments++] = GraphLine{line.id, top, column, std::nullopt};  // ends in a root
      }
    }
  }
  next.resize(static_cast<size_t>(count));

  if (!found && !parents.empty()) {
    column = static_cast<int>(next.size());
    lineId = column;
    next.push_back(Line{column, parents[0]});
    segment[segments++] = GraphLine{column, std::nullopt, column, column};
  }

  for (size_t k = 1; k < parents.size(); ++k) {
    const auto existing = std::find_if(next.begin(), next.end(), [&](const Line& l) { return sameSha(l.nextSha, parents[k]); });
    if (existing != next.end()) {
      segment[segments++] = GraphLine{existing->id, std::nullopt, column, static_cast<int>(existing - next.begin())};
    } else {
      const int j = static_cast<int>(next.size());
      segment[segments++] = GraphLine{j, std::nullopt, column, j};
      next.push_back(Line{j, parents[k]});
    }
  }

  GraphInfo info;
  info.lines.assign(segment, segment + segments);
  info.currentCommitColumn = column;
  info.lineId = lineId;
  return info;
}
