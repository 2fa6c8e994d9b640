#include "Git/Merge/SideBySideMergeController.h"

#include <algorithm>

#include "Logging/AdvancedLogger.h"

namespace {
QString describe(const MergeConflict::Line& line) { return QStringLiteral("'") + line.text().trimmed() + QStringLiteral("'"); }
}  // namespace

SideBySideMergeController::SideBySideMergeController(std::shared_ptr<MergeConflict> mergeConflict)
    : mergeConflict_(std::move(mergeConflict)) {
  for (MergeConflictPart part : {MergeConflictPart::local, MergeConflictPart::remote, MergeConflictPart::merged}) {
    views_[size_t(part)] = std::make_unique<MergeConflictView>(mergeConflict_, part);
  }
}

void SideBySideMergeController::regenerate(bool changeContainsNewlines) {
  updateInProgress_ = true;
  for (MergeConflictPart part : {MergeConflictPart::local, MergeConflictPart::remote, MergeConflictPart::merged}) {
    views_[size_t(part)] = std::make_unique<MergeConflictView>(mergeConflict_, part);
  }
  if (onRegenerated) onRegenerated(changeContainsNewlines);
  updateInProgress_ = false;
}

std::optional<qsizetype> SideBySideMergeController::performUpdate(MergeConflictView::Range range,
                                                                 const std::optional<QString>& replacement,
                                                                 bool changeContainsNewlines) {
  if (updateInProgress_) {
    LOG_WARNING(QStringLiteral("mergeTextView: request to update text, while update in progress"));
    return std::nullopt;
  }
  if (!replacement) {
    LOG_WARNING(QStringLiteral("mergeTextView: replacementString is nil"));
    return std::nullopt;
  }
  const MergeConflictView* view = views_[size_t(MergeConflictPart::merged)].get();
  const auto met = view->lines(range);
  if (std::none_of(met.begin(), met.end(), [](const MergeConflictView::Line* line) { return bool(line->origin); })) {
    LOG_INFO(QStringLiteral("skip service line edit"));
    return std::nullopt;
  }
  LOG_DEBUG(QStringLiteral("Replace %1..<%2 with '").arg(range.start).arg(range.end) + *replacement +
            QStringLiteral("'. changeContainsNewlines: ") + (changeContainsNewlines ? QStringLiteral("true") : QStringLiteral("false")));
  view->removeRange(range);
  if (range.length() > 0 && !replacement->isEmpty()) {
    // The removal moved the offsets the insert is given in.
    views_[size_t(MergeConflictPart::merged)] = std::make_unique<MergeConflictView>(mergeConflict_, MergeConflictPart::merged);
    view = views_[size_t(MergeConflictPart::merged)].get();
  }
  view->insert(range.start, *replacement);
  regenerate(changeContainsNewlines);
  return range.start + replacement->size();
}

void SideBySideMergeController::addLine(const MergeConflict::LinePtr& line) {
  if (updateInProgress_ || !line) return;
  LOG_DEBUG(QStringLiteral("Row added: ") + describe(*line));
  if (MergeConflict::SelectableLine* selectable = line->asSelectable()) selectable->select();
  regenerate(true);
}

void SideBySideMergeController::removeLine(const MergeConflict::LinePtr& line) {
  if (updateInProgress_ || !line) return;
  LOG_DEBUG(QStringLiteral("Row removed: ") + describe(*line));
  line->removeFromParentChunk();
  if (MergeConflict::SelectableLine* selectable = line->asSelectable()) selectable->isSelected = false;
  regenerate(true);
}

void SideBySideMergeController::addChunk(const MergeConflict::ChunkPtr& chunk, MergeConflictPart side) {
  auto* change = dynamic_cast<MergeConflict::ChangeChunk*>(chunk.get());
  if (updateInProgress_ || !change) return;
  LOG_DEBUG(QStringLiteral("Chunk added: %1 lines").arg(change->lines(side).size()));
  change->selectSide(side);
  regenerate(true);
}

void SideBySideMergeController::removeChunk(const MergeConflict::ChunkPtr& chunk, MergeConflictPart side) {
  auto* change = dynamic_cast<MergeConflict::ChangeChunk*>(chunk.get());
  if (updateInProgress_ || !change) return;
  LOG_DEBUG(QStringLiteral("Chunk removed: %1 lines").arg(change->lines(side).size()));
  change->unselectSide(side);
  regenerate(true);
}

void SideBySideMergeController::chooseSide(const MergeConflict::ChunkPtr& chunk, MergeConflictPart side) {
  auto* change = dynamic_cast<MergeConflict::ChangeChunk*>(chunk.get());
  if (updateInProgress_ || !change) return;
  change->choose(side);
  regenerate(true);
}
