#pragma once
#include <QString>
#include <memory>
#include <vector>

#include "Models/XSubChunk.h"

// One hunk. The four numbers are those of the "@@" line as printed; a count that git
// left out reads as 0. Whoever needs true lengths counts the lines.
struct XChunk {
  qint64 fromStart = 0;
  qint64 fromLength = 0;
  qint64 toStart = 0;
  qint64 toLength = 0;
  QString contextString;  // what follows the closing "@@", its leading blank kept
  std::vector<XSubChunkPtr> subChunks;
};

using XChunkPtr = std::shared_ptr<const XChunk>;
