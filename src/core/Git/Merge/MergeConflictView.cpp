#include "Git/Merge/MergeConflictView.h"

#include <algorithm>

#include "Logging/AdvancedLogger.h"
#include "Models/PresentationContext.h"

namespace {

QString rangeText(MergeConflictView::Range range) { return QStringLiteral("%1..<%2").arg(range.start).arg(range.end); }

std::vector<MergeConflict::LinePtr> paneLines(const MergeConflict::Chunk& chunk, MergeConflictPart part) {
  if (part == MergeConflictPart::merged) return chunk.resultLines;
  if (chunk.kind() == MergeConflict::Chunk::Kind::context) return static_cast<const MergeConflict::ContextChunk&>(chunk).lines;
  const auto& side = static_cast<const MergeConflict::ChangeChunk&>(chunk).lines(part);
  return {side.begin(), side.end()};
}

}  // namespace

MergeConflictView::MergeConflictView(std::shared_ptr<MergeConflict> mergeConflict, MergeConflictPart viewMode)
    : mergeConflict_(std::move(mergeConflict)), viewMode_(viewMode) {
  PresentationContext context;
  qsizetype row = 0;
  const bool merged = viewMode == MergeConflictPart::merged;
  chunks_.reserve(mergeConflict_->chunks.size());
  for (const MergeConflict::ChunkPtr& origin : mergeConflict_->chunks) {
    Chunk chunk;
    chunk.origin = origin;
    chunk.range.start = context.cursor();
    chunk.lineRange.start = row;
    const auto write = [&](QStringView text, const MergeConflict::LinePtr& line, LineKind kind, std::vector<Line>& into) {
      Line entry;
      entry.range.start = context.cursor();
      context.append(text);
      entry.range.end = context.cursor();
      entry.lineNumber = row;
      entry.origin = line;
      entry.kind = kind;
      if (!text.isEmpty()) ++row;
      into.push_back(std::move(entry));
    };
    for (const MergeConflict::LinePtr& line : paneLines(*origin, viewMode)) {
      const MergeConflict::SelectableLine* selectable = line->asSelectable();
      const bool empty = selectable && selectable->isEmptyLine();
      if (merged) {
        write(line->text(), line, empty ? LineKind::empty : LineKind::line, chunk.lines);
      } else if (empty) {
        write(QStringView(emptyLineText), line, LineKind::empty, chunk.lines);
      } else if (!line->originalString.endsWith(u'\n')) {
        // The file's last line without its newline: a source pane still needs the row.
        write(QString(line->originalString + u'\n'), line, LineKind::line, chunk.lines);
      } else {
        write(line->originalString, line, LineKind::line, chunk.lines);
      }
    }
    if (merged && origin->kind() == MergeConflict::Chunk::Kind::conflict && origin->resultLines.empty()) {
      write(QStringView(openConflictText), nullptr, LineKind::openConflict, chunk.lines);
    }
    const qsizetype rows = origin->rowCount();
    while (row - chunk.lineRange.start < rows) write(u"\n", nullptr, LineKind::alignment, chunk.alignmentLines);
    chunk.range.end = context.cursor();
    chunk.lineRange.end = row;
    chunks_.push_back(std::move(chunk));
  }
  text_ = context.takeString();
  for (const Chunk& chunk : chunks_) {
    for (const Line& line : chunk.lines) {
      if (line.range.length() > 0) allLines_.push_back(&line);
    }
    for (const Line& line : chunk.alignmentLines) allLines_.push_back(&line);
  }
  std::sort(allLines_.begin(), allLines_.end(), [](const Line* a, const Line* b) { return a->range.start < b->range.start; });
}

std::vector<const MergeConflictView::Line*> MergeConflictView::lines(Range range) const {
  std::vector<const Line*> result;
  // The first line that ends behind the range's start.
  auto it = std::upper_bound(allLines_.begin(), allLines_.end(), range.start,
                             [](qsizetype offset, const Line* line) { return offset < line->range.end; });
  if (range.length() <= 0) {
    if (it != allLines_.end() && (*it)->range.start <= range.start) result.push_back(*it);
    // At the very end of the text the last line takes what is typed there.
    else if (it == allLines_.end() && !allLines_.empty() && allLines_.back()->range.end == range.start) result.push_back(allLines_.back());
    return result;
  }
  for (; it != allLines_.end() && (*it)->range.start < range.end; ++it) result.push_back(*it);
  return result;
}

const MergeConflictView::Line* MergeConflictView::lineAt(qsizetype offset) const {
  const auto found = lines({offset, offset});
  return found.empty() ? nullptr : found.front();
}

const MergeConflictView::Chunk* MergeConflictView::chunkAt(qsizetype offset) const {
  for (const Chunk& chunk : chunks_) {
    if (offset >= chunk.range.start && offset < chunk.range.end) return &chunk;
  }
  return nullptr;
}

const MergeConflictView::Line* MergeConflictView::nextLine(const Line* line) const {
  const auto it = std::upper_bound(allLines_.begin(), allLines_.end(), line->range.start,
                                   [](qsizetype offset, const Line* l) { return offset < l->range.start; });
  return it == allLines_.end() ? nullptr : *it;
}

bool MergeConflictView::meldWith(const Line& first, const Line& second) const {
  if (!first.origin || !second.origin) {
    LOG_WARNING(QStringLiteral("cannot meld service lines"));
    return false;
  }
  first.origin->meldWith(*second.origin);
  return true;
}

void MergeConflictView::removeRange(Range range) const {
  if (range.length() < 1) return;
  LOG_DEBUG(QStringLiteral("remove range: ") + rangeText(range));
  std::vector<const Line*> met;
  for (const Line* line : lines(range)) {
    LOG_DEBUG(QStringLiteral("old line ") + text_.mid(line->range.start, line->range.length()));
    // Padding holds no text of the file: a range over it takes the lines around it only.
    if (line->origin) met.push_back(line);
    else LOG_DEBUG(QStringLiteral("cannot remove alignment line"));
  }
  if (met.empty()) return;
  bool mergeRequired = false;
  for (size_t i = 0; i < met.size(); ++i) {
    const Line& line = *met[i];
    const qsizetype from = std::max(range.start, line.range.start) - line.range.start;
    const qsizetype to = std::min(range.end, line.range.end) - line.range.start;
    const bool hadNewline = line.origin->text().endsWith(u'\n');
    line.origin->removeSubrange(from, to);
    if (i == 0 && to == line.range.length() && from > 0 && hadNewline) {
      LOG_DEBUG(QStringLiteral("removed \\n. line merge required"));
      mergeRequired = true;
    }
    LOG_DEBUG(QStringLiteral("new line: '") + line.origin->text() + QStringLiteral("'"));
  }
  if (!mergeRequired) return;
  const Line& first = *met.front();
  const Line& last = *met.back();
  if (&first != &last && range.end < last.range.end) {
    LOG_DEBUG(QStringLiteral("reached remaining range length. Meld the last line into the first one"));
    meldWith(first, last);
  } else if (const Line* next = nextLine(&last)) {
    meldWith(first, *next);
  }
}

void MergeConflictView::insert(qsizetype location, const QString& string) const {
  if (string.isEmpty()) return;
  LOG_DEBUG(QStringLiteral("insert at %1 string: '").arg(location) + string + QStringLiteral("'"));
  const auto met = lines({location, location});
  if (met.empty() || !met.front()->origin) {
    LOG_ERROR(QStringLiteral("can't find line with location %1").arg(location));
    return;
  }
  const Line& target = *met.front();
  const MergeConflict::ChunkPtr parent = target.origin->parentChunk.lock();
  if (!parent) {
    LOG_ERROR(QStringLiteral("target line has no parent chunk"));
    return;
  }
  auto& result = parent->resultLines;
  auto position = std::find(result.begin(), result.end(), target.origin);
  if (position == result.end()) {
    LOG_ERROR(QStringLiteral("cannot find target line in the parent chunk"));
    return;
  }
  QStringList pieces;
  for (qsizetype start = 0; start < string.size();) {
    const qsizetype newline = string.indexOf(u'\n', start);
    const qsizetype end = newline < 0 ? string.size() : newline + 1;
    pieces << string.mid(start, end - start);
    start = end;
  }
  const std::optional<QString> tail = target.origin->insert(location - target.range.start, pieces.front());
  if (pieces.size() > 1 && !tail) LOG_DEBUG(QStringLiteral("tail is not defined"));
  std::vector<MergeConflict::LinePtr> added;
  qsizetype index = position - result.begin();
  for (qsizetype i = 1; i < pieces.size(); ++i) {
    auto line = std::make_shared<MergeConflict::Line>(ContextType::none, QString());
    line->customString = pieces[i];
    line->parentChunk = parent;
    result.insert(result.begin() + ++index, line);
    added.push_back(line);
  }
  if (tail) {
    if (!added.empty() && !pieces.back().endsWith(u'\n')) {
      added.back()->customString = added.back()->text() + *tail;
    } else {
      auto line = std::make_shared<MergeConflict::Line>(ContextType::none, QString());
      line->customString = *tail;
      line->parentChunk = parent;
      result.insert(result.begin() + ++index, line);
      added.push_back(line);
    }
  }
  LOG_DEBUG(QStringLiteral("new line: '") + target.origin->text() + QStringLiteral("'"));
  for (const auto& line : added) LOG_DEBUG(QStringLiteral("new line: '") + line->text() + QStringLiteral("'"));
}
