#include "Models/WordDiff.h"

#include <algorithm>

using namespace PatchView;

namespace {

QStringView rowText(const XChangedLine& line) {
  QStringView text(line.line);
  if (text.endsWith(u'\n')) text.chop(1);
  if (text.endsWith(u'\r')) text.chop(1);
  return text;
}

void markPair(const ChangedLine& removed, const ChangedLine& added, std::vector<Range>& spans) {
  const QStringView before = rowText(*removed.node);
  const QStringView after = rowText(*added.node);
  const qsizetype shorter = std::min(before.size(), after.size());
  qsizetype prefix = 0;
  while (prefix < shorter && before[prefix] == after[prefix]) ++prefix;
  qsizetype suffix = 0;
  while (suffix < shorter - prefix && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) ++suffix;
  // Nothing in common but indentation, or too little to call it the same line: the whole
  // row's colour says it already.
  if (before.left(prefix).trimmed().isEmpty() && before.right(suffix).trimmed().isEmpty()) return;
  if ((prefix + suffix) * 3 < std::max(before.size(), after.size())) return;
  const auto mark = [&](const ChangedLine& line, qsizetype length) {
    const qsizetype changed = length - prefix - suffix;
    if (!line.range.isEmpty() && changed > 0) spans.push_back({line.range.location + prefix, changed});
  };
  mark(removed, before.size());
  mark(added, after.size());
}

}  // namespace

std::vector<Range> WordDiff::changedSpans(const std::vector<FilePatch>& files) {
  std::vector<Range> spans;
  for (const FilePatch& file : files) {
    if (file.node && file.node->isMinified) continue;
    for (const Chunk& chunk : file.chunks) {
      for (const SubChunk& sub : chunk.subChunks) {
        const size_t pairs = std::min(sub.removedLines.size(), sub.addedLines.size());
        for (size_t i = 0; i < pairs; ++i) {
          if (sub.removedLines[i].node && sub.addedLines[i].node) markPair(sub.removedLines[i], sub.addedLines[i], spans);
        }
      }
    }
  }
  std::sort(spans.begin(), spans.end(), [](const Range& a, const Range& b) { return a.location < b.location; });
  return spans;
}
