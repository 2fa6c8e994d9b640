#pragma once
// Lays an XPatch out as the text of a diff view and records where every file, hunk and
// line stands (PatchView).
//
// Unified: one row per file title, per hunk header and per line, lines without their
// first column, and a "\ No newline at end of file" row behind a flagged line.
// Side by side: two texts with the same number of rows. Context stands on both sides;
// in a change the removed lines stand left and the added lines right, and the shorter
// side is padded with alignment rows. Each side's tree still lists the lines of the
// other side, with an empty range, so that a selection on one side yields the same
// patch as in the unified layout.
#include <QString>

#include "Models/PatchView.h"

class PatchViewBuilder {
 public:
  struct SideBySide {
    PatchView::Document left;
    PatchView::Document right;
  };

  static PatchView::Document unified(const XPatchPtr& patch);
  static SideBySide sideBySide(const XPatchPtr& patch);

  // "old → new" for a moved file, else the one path.
  static QString fileTitle(const XFilePatch& file);
  // The hunk header with lengths counted from the lines (the parsed ones read 0 for a
  // count that git left out).
  static QString chunkTitle(const XChunk& chunk);
};
