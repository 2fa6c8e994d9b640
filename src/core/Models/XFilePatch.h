#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "Models/FileMode.h"
#include "Models/XChunk.h"

// One file of a diff. An absent path is /dev/null (created or deleted file) or a file
// whose "---"/"+++" lines were not printed (binary, pure rename, pure mode change).
struct XFilePatch {
  enum class Location { revision, staged, unstaged };

  std::optional<QString> oldFilepath;
  std::optional<QString> newFilepath;
  std::optional<FileMode> oldFileMode;
  std::optional<FileMode> newFileMode;
  QString oldTreeIsh;
  QString treeIsh;
  std::vector<XChunkPtr> chunks;
  std::optional<qint64> similarity;
  // Some line is longer than 2047 user-perceived characters: no highlighting for it.
  bool isMinified = false;
  Location location = Location::revision;
};
