#pragma once
// Whether a text diff or a text file is rendered, decided on the background queue after
// the parse. Very large texts wait for the user's "Load Diff".
#include <QString>
#include <optional>

#include "Models/XFilePatch.h"
#include "Models/XPatch.h"

struct TextDisplayDecision {
  enum class Kind { render, tooLarge, unparsable };

  static constexpr qsizetype largeTextLimit = 1048576;  // UTF-16 units that still render
  static constexpr qint64 lfsHintSize = 500000;         // from here a binary blob suggests LFS
  static inline const QString fallbackTitle = QStringLiteral("Large diffs are not rendered by default");
  static inline const QString fallbackButton = QStringLiteral("Load Diff");

  Kind kind = Kind::render;
  XPatchPtr patch;  // for render

  // Only the length decides; loadLargeDiff lifts the limit.
  static bool exceedsLimit(qsizetype utf16Length, bool loadLargeDiff);
  // Parses, then applies the limit (logging at info level when it holds a text back).
  static TextDisplayDecision forDiff(const QString& diff, const QString& path, XFilePatch::Location location, bool loadLargeDiff);
  // The tip of a binary blob not managed by LFS: "File is 1.2 MB and is not managed by LFS".
  static std::optional<QString> notLfsTip(qint64 size);
};
