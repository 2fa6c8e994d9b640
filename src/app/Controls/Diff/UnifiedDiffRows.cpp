#include "Controls/Diff/UnifiedDiffRows.h"

#include "Models/XChangedLine.h"
#include "Models/XChunk.h"
#include "Models/XSubChunk.h"

namespace {
QString withoutLineFeed(const QString& line) {
  QString text = line;
  if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
  if (text.endsWith(QLatin1Char('\r'))) text.chop(1);
  return text;
}
}  // namespace

std::vector<UnifiedDiffRow> unifiedDiffRows(const XFilePatch& file) {
  std::vector<UnifiedDiffRow> rows;
  for (const auto& chunk : file.chunks) {
    // The header's counts may have been left out by git; the lines tell the truth.
    qint64 fromLength = 0;
    qint64 toLength = 0;
    for (const auto& sub : chunk->subChunks) {
      const auto context = static_cast<qint64>(sub->preContextLines.size() + sub->postContextLines.size());
      fromLength += context + static_cast<qint64>(sub->removedLines.size());
      toLength += context + static_cast<qint64>(sub->addedLines.size());
    }
    rows.push_back({UnifiedDiffRow::Kind::hunkHeader, 0, 0,
                    QStringLiteral("@@ -%1,%2 +%3,%4 @@%5")
                        .arg(chunk->fromStart)
                        .arg(fromLength)
                        .arg(chunk->toStart)
                        .arg(toLength)
                        .arg(withoutLineFeed(chunk->contextString))});
    qint64 oldLine = chunk->fromStart;
    qint64 newLine = chunk->toStart;
    auto context = [&](const XChangedLineList& lines) {
      for (const auto& line : lines) rows.push_back({UnifiedDiffRow::Kind::context, oldLine++, newLine++, withoutLineFeed(line->line)});
    };
    for (const auto& sub : chunk->subChunks) {
      context(sub->preContextLines);
      for (const auto& line : sub->removedLines) rows.push_back({UnifiedDiffRow::Kind::removed, oldLine++, 0, withoutLineFeed(line->line)});
      for (const auto& line : sub->addedLines) rows.push_back({UnifiedDiffRow::Kind::added, 0, newLine++, withoutLineFeed(line->line)});
      context(sub->postContextLines);
      if (sub->noNewLineAtEndOfFileLine) {
        rows.push_back({UnifiedDiffRow::Kind::noNewline, 0, 0, QStringLiteral("\\ ") + withoutLineFeed(sub->noNewLineAtEndOfFileLine->line)});
      }
    }
  }
  return rows;
}
