#pragma once
// A path with conflict stages in the index: its base, local and remote versions.
#include <QString>
#include <optional>
#include <vector>

#include "Models/ChangeType.h"

// The stage numbers of the index follow the order: 1, 2, 3.
enum class UnmergedFileVersionType { base, local, remote };

struct UnmergedFileVersion {
  UnmergedFileVersionType type = UnmergedFileVersionType::base;
  QString mode;  // "100644"
  QString sha;   // the blob

  int stage() const { return static_cast<int>(type) + 1; }
  bool operator==(const UnmergedFileVersion&) const = default;
};

struct UnmergedFile {
  QString path;
  // A side that deleted the file has no version of its own.
  std::optional<UnmergedFileVersion> baseVersion;
  std::optional<UnmergedFileVersion> localVersion;
  std::optional<UnmergedFileVersion> remoteVersion;
  ChangeType localChangeType = ChangeType::unknown;
  ChangeType remoteChangeType = ChangeType::unknown;

  bool operator==(const UnmergedFile&) const = default;
};

using UnmergedFileList = std::vector<UnmergedFile>;
