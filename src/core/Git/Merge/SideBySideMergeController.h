#pragma once
// The loop of the merge editor: an edit of the result pane never reaches its text.
// It is turned into changes of the model, and all three panes are generated again, so
// text and model never differ. Lives on the main thread.
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "Git/Merge/MergeConflictView.h"

class SideBySideMergeController {
 public:
  explicit SideBySideMergeController(std::shared_ptr<MergeConflict> mergeConflict);

  const std::shared_ptr<MergeConflict>& mergeConflict() const { return mergeConflict_; }
  const MergeConflictView& view(MergeConflictPart part) const { return *views_[size_t(part)]; }
  bool updateInProgress() const { return updateInProgress_; }

  // Called after the panes were generated again; the panes take their texts from
  // view(). `changeContainsNewlines` tells whether rows may have moved.
  std::function<void(bool changeContainsNewlines)> onRegenerated;

  // The result pane asks this in place of changing its text: the range of its text and
  // what replaces it. Gives the cursor position afterwards, or nothing when the edit was
  // refused (the reason is logged).
  std::optional<qsizetype> performUpdate(MergeConflictView::Range range, const std::optional<QString>& replacement,
                                         bool changeContainsNewlines);

  // Clicks in a source pane: a line or a whole side of a chunk joins or leaves the result.
  void addLine(const MergeConflict::LinePtr& line);
  void removeLine(const MergeConflict::LinePtr& line);
  void addChunk(const MergeConflict::ChunkPtr& chunk, MergeConflictPart side);
  void removeChunk(const MergeConflict::ChunkPtr& chunk, MergeConflictPart side);
  void chooseSide(const MergeConflict::ChunkPtr& chunk, MergeConflictPart side);

  void regenerate(bool changeContainsNewlines);

 private:
  std::shared_ptr<MergeConflict> mergeConflict_;
  std::array<std::unique_ptr<MergeConflictView>, 3> views_;
  bool updateInProgress_ = false;
};
