#include "Models/XPatch.h"

qint64 XPatch::changedLinesCount() const {
  qint64 count = 0;
  for (const XFilePatch& file : files) {
    for (const XChunkPtr& chunk : file.chunks) {
      for (const XSubChunkPtr& subChunk : chunk->subChunks) {
        count += qint64(subChunk->removedLines.size() + subChunk->addedLines.size());
      }
    }
  }
  return count;
}
