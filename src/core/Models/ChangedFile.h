#pragma once
// One changed path: of the work tree, of the index, or of a commit. Immutable; a file
// with staged and unstaged changes gives two objects, one per side.
#include <QString>
#include <memory>
#include <optional>

#include "Models/ChangeType.h"

class ChangedFile {
 public:
  virtual ~ChangedFile() = default;

  std::optional<QString> oldPath;  // the source of a rename or copy
  QString path;                    // relative to the work tree
  ChangeType changeType = ChangeType::unknown;
  bool staged = false;       // the entry is for the index side
  bool tracked = false;      // git knows the file
  bool isNew = false;        // untracked, shown as new
  bool isDirectory = false;  // the entry stands for a directory
  std::optional<QString> treeIsh;   // the revision an entry of a commit belongs to
  std::optional<QString> fileMode;  // the mode, where it was read

  bool operator==(const ChangedFile& other) const {
    return oldPath == other.oldPath && path == other.path && changeType == other.changeType && staged == other.staged &&
           tracked == other.tracked && isNew == other.isNew && isDirectory == other.isDirectory &&
           treeIsh == other.treeIsh && fileMode == other.fileMode;
  }
};

using ChangedFilePtr = std::shared_ptr<const ChangedFile>;
