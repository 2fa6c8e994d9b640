#pragma once
// Turns a text selection in a diff view into the smaller patch that stages, unstages or
// discards just the selected lines.
//
// Every hunk that the selection meets is rebuilt line by line. A selected change stays a
// change (with swapped signs for a discard, which applies forward to the working tree).
// An unselected change either disappears, when the side the patch applies to doesn't
// have it, or becomes context, when it does. Hunk lengths are counted again; the start
// lines stay, and git apply finds the place.
//
// The file header is then pointed at the one file that the patch applies to: a moved
// file keeps the path it has in the target, a deleted file that keeps some lines is no
// longer deleted, and a line kept after a line without a final newline gets one.
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "Models/PatchView.h"
#include "Models/SelectionMode.h"
#include "Models/XPatch.h"

class SelectionPatch {
 public:
  // Null if the selection changes no line: hunks that would keep only context are left
  // out, since git apply refuses them.
  static XPatchPtr make(qsizetype selectionStart, qsizetype selectionEnd, SelectionMode mode,
                        const std::vector<PatchView::FilePatch>& files);

  // The alert before a discard; absent when the patch changes no line.
  struct DiscardConfirmation {
    QString messageText;
    QString informativeText;
    QString confirmButtonTitle;
    QString cancelButtonTitle;
  };
  // A whole hunk is named as one; selected lines are counted.
  static std::optional<DiscardConfirmation> discardConfirmation(const XPatch& patch, bool wholeHunk = false);

  // What to refresh after applying: each file's old path, else its new one.
  static QStringList changedPaths(const XPatch& patch);
};
