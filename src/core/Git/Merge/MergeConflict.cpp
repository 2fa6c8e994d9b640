#include "Git/Merge/MergeConflict.h"

#include <algorithm>

#include "Logging/AdvancedLogger.h"

QString MergeConflict::resultText() const {
  QString text;
  for (const ChunkPtr& chunk : chunks) {
    for (const LinePtr& line : chunk->resultLines) text += line->text();
  }
  return text;
}

int MergeConflict::conflictCount() const {
  return int(std::count_if(chunks.begin(), chunks.end(), [](const ChunkPtr& c) { return c->kind() == Chunk::Kind::conflict; }));
}

int MergeConflict::unresolvedConflictCount() const {
  return int(std::count_if(chunks.begin(), chunks.end(), [](const ChunkPtr& c) {
    return c->kind() == Chunk::Kind::conflict && c->resultLines.empty();
  }));
}

QString MergeConflict::title() const {
  const int total = conflictCount();
  const int resolved = total - unresolvedConflictCount();
  if (resolved == total) return QStringLiteral("All conflicts resolved");
  return QStringLiteral("Resolved %1 %2 of %3")
      .arg(resolved)
      .arg(resolved == 1 ? QStringLiteral("conflict") : QStringLiteral("conflicts"))  // agrees with the number before it
      .arg(total);
}

void MergeConflict::Line::removeFromParentChunk() {
  const ChunkPtr parent = parentChunk.lock();
  if (!parent) {
    LOG_ERROR(QStringLiteral("Line has no parent chunk!"));
    return;
  }
  customString.reset();
  auto& result = parent->resultLines;
  result.erase(std::remove_if(result.begin(), result.end(), [this](const LinePtr& line) { return line.get() == this; }),
               result.end());
}

void MergeConflict::Line::meldWith(Line& other) {
  customString = text() + other.text();
  if (SelectableLine* selectable = other.asSelectable()) {
    if (selectable->isSelected) selectable->removeFromParentChunk();
  } else {
    other.removeFromParentChunk();
  }
}

void MergeConflict::Line::removeSubrange(qsizetype from, qsizetype to) {
  const QString current = text();
  if (from < 0 || to < from || to > current.size()) {
    LOG_ERROR(QStringLiteral("invalid local range %1..<%2 of '%3'").arg(from).arg(to).arg(current));
    return;
  }
  QString rest = current;
  rest.remove(from, to - from);
  customString = rest;
  if (rest.isEmpty()) removeFromParentChunk();
}

std::optional<QString> MergeConflict::Line::insert(qsizetype offset, const QString& string) {
  QString combined = text();
  combined.insert(std::clamp<qsizetype>(offset, 0, combined.size()), string);
  const qsizetype newline = combined.indexOf(u'\n');
  if (newline < 0 || newline == combined.size() - 1) {
    customString = combined;
    return std::nullopt;
  }
  customString = combined.left(newline + 1);
  return combined.mid(newline + 1);
}

void MergeConflict::SelectableLine::select() {
  if (isSelected) return;
  if (const ChunkPtr parent = parentChunk.lock()) parent->resultLines.push_back(shared_from_this());
  isSelected = true;
}

void MergeConflict::SelectableLine::removeFromParentChunk() {
  // A line outside the result is not selected: the source panes show the flag.
  Line::removeFromParentChunk();
  isSelected = false;
}

qsizetype MergeConflict::ContextChunk::rowCount() const {
  return qsizetype(std::max(lines.size(), resultLines.size()));
}

void MergeConflict::ContextChunk::adoptLines() {
  for (const LinePtr& line : lines) line->parentChunk = weak_from_this();
}

qsizetype MergeConflict::ChangeChunk::rowCount() const {
  return qsizetype(std::max({remoteLines.size(), localLines.size(), resultLines.size()}));
}

void MergeConflict::ChangeChunk::adoptLines() {
  for (const auto& line : remoteLines) line->parentChunk = weak_from_this();
  for (const auto& line : localLines) line->parentChunk = weak_from_this();
  for (const auto& line : resultLines) line->parentChunk = weak_from_this();
}

void MergeConflict::ChangeChunk::clear() {
  const auto reset = [](SelectableLine* line) {
    if (line && line->isSelected) {
      line->isSelected = false;
      line->customString.reset();
    }
  };
  for (const LinePtr& line : resultLines) reset(line->asSelectable());
  for (const auto& line : remoteLines) reset(line.get());
  for (const auto& line : localLines) reset(line.get());
  resultLines.clear();
}

void MergeConflict::ChangeChunk::choose(MergeConflictPart side) {
  clear();
  selectSide(side);
}

void MergeConflict::ChangeChunk::selectSide(MergeConflictPart side) {
  for (const auto& line : lines(side)) line->select();
}

void MergeConflict::ChangeChunk::unselectSide(MergeConflictPart side) {
  for (const auto& line : lines(side)) {
    if (line->isSelected) line->removeFromParentChunk();
  }
}
