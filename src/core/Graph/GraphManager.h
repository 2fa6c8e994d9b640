#pragma once
// The lanes of the commit list, computed row by row and only as far as the list has
// been scrolled: rows come in blocks of 1024. See GraphManager.cpp for the algorithm.
#include <span>
#include <vector>

#include "Graph/GetRevisionsContext.h"
#include "Graph/GraphInfo.h"
#include "Graph/RevisionGraph.h"

class GraphManager {
 public:
  static constexpr int blockSize = 1024;

  GraphManager();

  // Starts over for a new set of visible rows. The graph must outlive its use here.
  void reset(const RevisionGraph* revisions);

  // Makes sure that `row` and the rest of its block are computed. Call before graphItem.
  void precalculate(int row);
  const GraphInfo& graphItem(int row) const { return graphItems_[static_cast<size_t>(row)]; }
  const std::vector<GraphInfo>& graphItems() const { return graphItems_; }
  int lastPrecalculatedRow() const { return lastPrecalculatedRow_; }

  // One step of the lane algorithm: the lines of the row of `sha`, whose lanes drawn
  // to `parents`, given the lanes open above it (`previous`). `next` receives the
  // lanes open below it; it is cleared first and keeps its capacity.
  static GraphInfo computeRow(const std::vector<Line>& previous, std::vector<Line>& next,
                              std::span<const Sha> parents, const Sha& sha);

 private:
  const RevisionGraph* revisions_ = nullptr;
  std::vector<GraphInfo> graphItems_;
  int lastPrecalculatedRow_ = -1;
  GetRevisionsContext ctx1_;
  GetRevisionsContext ctx2_;
};
