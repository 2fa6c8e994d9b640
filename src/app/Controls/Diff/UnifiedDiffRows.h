#pragma once
// The rows a unified diff view shows for one file: hunk headers, context, removals,
// additions and "no newline" notes, each with its old and new line numbers.
#include <QString>
#include <vector>

#include "Models/XFilePatch.h"

struct UnifiedDiffRow {
  enum class Kind { hunkHeader, context, removed, added, noNewline };
  Kind kind = Kind::context;
  qint64 oldLine = 0;  // 0: none
  qint64 newLine = 0;
  QString text;        // without the line feed
};

std::vector<UnifiedDiffRow> unifiedDiffRows(const XFilePatch& file);
