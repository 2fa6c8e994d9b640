#pragma once
// Turns the combined diff that `git diff` prints for an unmerged path into tokens. The
// first column marks a line against the first parent (the local side): "+" there means
// the line is not in the local side, so it came from the remote one. That column is
// stored as `remote`, the second as `local`.
#include <QString>
#include <optional>
#include <vector>

#include "Git/Merge/MergeConflict.h"

enum class MergeTokenType { context, conflictStart, baseStart, conflictEnd, other, baseEnd, conflictSeparator };

struct MergeToken {
  MergeTokenType type = MergeTokenType::other;
  qsizetype start = 0;  // the token's line in the text
  qsizetype length = 0;
  // context
  ContextType remote = ContextType::none;
  ContextType local = ContextType::none;
  // context: the line behind its two columns, with its newline; conflictStart: the local
  // name; conflictEnd: the remote name; baseStart: the base's sha; other: the whole line.
  QString string;

  QString describe() const;
};

struct UnifiedMergeTokenizer {
  // Nothing when a line cannot be read.
  std::optional<std::vector<MergeToken>> tokenize(const QString& text) const;

  // The name behind the marker's first 10 characters, newline included.
  static std::optional<QString> parseChunkDelimiter(const QString& text, qsizetype start, qsizetype length);
  static std::optional<QString> parseBaseSha(const QString& text, qsizetype start, qsizetype length);
  static std::optional<MergeToken> parseContextLine(QStringView line);
  static bool isContextLine(QStringView line);
};
