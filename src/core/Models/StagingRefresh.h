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

  // The paths to read so that a moved file is seen whole: each path, and both paths of
  // every listed move that touches one of them.
  static QStringList pathsToRead(const ChangedFileList& current, const QStringList& paths);
  // The list after a read of `paths` alone gave `fresh`: every entry that names one of
  // them (as its path or as the source of a move) is replaced, the rest stays, in list
  // order.
  static ChangedFileList merged(const ChangedFileList& current, const QStringList& paths, const ChangedFileList& fresh);
};
