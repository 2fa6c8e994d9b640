#pragma once
// The view tree laid over an XPatch: where each file, hunk and line stands in the text
// that a diff view shows. Line staging maps a text selection back through it, so every
// changed line of a hunk is present in every layout; a line that the layout doesn't
// show has an empty range and can never be selected.
#include <QString>
#include <optional>
#include <vector>

#include "Models/XPatch.h"

namespace PatchView {

struct Range {
  qsizetype location = 0;
  qsizetype length = 0;

  qsizetype end() const { return location + length; }
  bool isEmpty() const { return length <= 0; }
  bool contains(qsizetype index) const { return index >= location && index < end(); }
  // Starts before `until` and ends behind `from`.
  bool meets(qsizetype from, qsizetype until) const { return location < until && end() > from; }
  bool operator==(const Range&) const = default;
};

// What a sub-chunk does, for colouring.
enum class Schema { context, addition, removal, modification };

struct ChangedLine {
  Range range;
  qsizetype line = 0;  // row in the shown text
  // Absent for padding rows of the side-by-side layout, which never reach a patch.
  XChangedLinePtr node;
  bool noNewLineAtEndOfFile = false;
  std::optional<qint64> oldLineNumber;
  std::optional<qint64> newLineNumber;
};

struct SubChunk {
  Range range;
  std::vector<ChangedLine> preContextLines;
  std::vector<ChangedLine> removedLines;
  std::vector<ChangedLine> addedLines;
  std::vector<ChangedLine> alignmentLines;
  std::vector<ChangedLine> postContextLines;
  // The last "\ No newline at end of file" row of the sub-chunk, if one is shown.
  std::optional<ChangedLine> noNewLineAtEndOfFileLine;
  Schema schema = Schema::context;
  XSubChunkPtr node;
};

struct Chunk {
  Range range;
  Range innerRange;  // the rows below the header
  Range header;
  std::vector<SubChunk> subChunks;
  XChunkPtr node;
};

struct FilePatch {
  Range range;
  Range headerRange;
  Range innerRange;  // the chunks
  std::vector<Chunk> chunks;
  // The file as parsed; selection patches are copies of it with new chunks.
  std::shared_ptr<const XFilePatch> node;
};

// The shown text and the tree over it.
struct Document {
  QString text;
  std::vector<FilePatch> files;
};

// The first hunk of the file under `index` whose range holds it; the target of the
// stage bar when the mouse rests there.
const Chunk* chunkAt(const std::vector<FilePatch>& files, qsizetype index);

}  // namespace PatchView
