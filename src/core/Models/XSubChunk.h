#pragma once
#include <memory>
#include <vector>

#include "Models/XChangedLine.h"

// One change with the context around it: context, then removals and additions in any
// mix, then context. Context between two changes is the post-context of the first.
struct XSubChunk {
  XChangedLineList preContextLines;
  XChangedLineList removedLines;
  XChangedLineList addedLines;
  XChangedLineList postContextLines;
  // The text of the "\ No newline at end of file" line (without the "\ "); null if none.
  XChangedLinePtr noNewLineAtEndOfFileLine;
};

using XSubChunkPtr = std::shared_ptr<const XSubChunk>;
