#pragma once
// What a diff pane shows for one change, resolved on the job's thread: text (the parsed
// file patch and its unified rows), two images, or a message, with "Load Diff" offered
// for a text held back by its size.
#include <QImage>
#include <QString>
#include <optional>
#include <vector>

#include "Controls/Diff/UnifiedDiffRows.h"
#include "Git/ResultError.h"
#include "Models/FileContent/DiffFileContent.h"
#include "Models/XFilePatch.h"
#include "Models/XPatch.h"

struct DiffContent {
  XPatchPtr patch;  // for text: one file with at least one hunk
  std::vector<UnifiedDiffRow> rows;
  QString message;
  bool offerLoadLarge = false;
  bool isImage = false;
  std::optional<QImage> oldImage;
  std::optional<QImage> newImage;
  // A conflicted file: its combined diff, shown as printed.
  std::optional<QString> conflictDiff;

  bool isText() const { return patch != nullptr; }
};

// A canceled read gives an empty content, which callers drop.
DiffContent diffContentFrom(const GitResult<DiffFileContentPtr>& result, XFilePatch::Location location, bool loadLarge);
