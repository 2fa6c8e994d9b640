#pragma once
#include <memory>
#include <vector>

#include "Models/XFilePatch.h"

// A parsed diff. Built once, never changed; shared between the parse job and the views.
struct XPatch {
  std::vector<XFilePatch> files;

  // Removed plus added lines over all files; context doesn't count.
  qint64 changedLinesCount() const;
};

using XPatchPtr = std::shared_ptr<const XPatch>;
