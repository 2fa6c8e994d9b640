#pragma once
// What to refresh after stage, unstage or discard: just the touched paths when that is
// cheaper, else the whole working-tree status.
#include <QStringList>

#include "Models/ChangedFile.h"
#include "Models/Subdomain.h"

struct StagingRefresh {
  enum class Kind { changedFiles, workingTree };
  Kind kind = Kind::workingTree;
  QStringList paths;                // for changedFiles
  Subdomain subdomains;             // for workingTree: the state and the changed files

  bool operator==(const StagingRefresh&) const = default;

  // One file, more than a batch, or none: the full working-tree refresh.
  static StagingRefresh after(const ChangedFileList& files);
};
