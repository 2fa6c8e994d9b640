#pragma once
// Classifies each line of a unified diff by its first character and a few prefixes.
// The text is walked once, on its UTF-16 units; only "\n" ends a line, so a "\r" stays
// part of the line. A header line that starts like a known header but doesn't parse
// makes the whole text fail: nothing partial is handed on.
#include <QRegularExpression>
#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

#include "Models/ChunkHeader.h"
#include "Models/PatchToken.h"

class PatchTokenizer {
 public:
  // "@@ -a,b +c,d @@ context". Each parse compiles it anew and hands it down.
  static QRegularExpression hunkHeaderExpression();

  // Absent if a line can't be tokenized; an empty text gives an empty list.
  static std::optional<std::vector<Token>> tokenize(const QString& text, const QRegularExpression& hunkHeader);

  // The parsers of single header lines; each takes the whole line, its newline optional.
  static std::optional<ChunkHeader> parseChunkHeader(QStringView line, const QRegularExpression& hunkHeader);
  static std::optional<TokenType::PatchHeaderFileMode> parseFileMode(QStringView line);
  static std::optional<TokenType::PatchHeaderIndex> parseIndexLine(QStringView line);
  static std::optional<TokenType::PatchHeaderSimilarity> parseSimilarityLine(QStringView line);
};
