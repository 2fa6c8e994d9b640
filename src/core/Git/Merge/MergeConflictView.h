#pragma once
// The text of one pane of the merge editor, generated from the model, with a map from
// text offsets back to model lines. Lines without an origin are service lines (padding
// that keeps the panes aligned, or the marker of an open conflict) and cannot be edited.
#include <QString>
#include <memory>
#include <vector>

#include "Git/Merge/MergeConflict.h"

class MergeConflictView {
 public:
  struct Range {
    qsizetype start = 0;
    qsizetype end = 0;  // half-open
    qsizetype length() const { return end - start; }
  };
  enum class LineKind { line, empty, alignment, openConflict };
  struct Line {
    Range range;
    qsizetype lineNumber = 0;
    MergeConflict::LinePtr origin;
    LineKind kind = LineKind::line;
  };
  struct Chunk {
    MergeConflict::ChunkPtr origin;
    std::vector<Line> lines;
    std::vector<Line> alignmentLines;
    Range range;
    Range lineRange;  // rows
  };

  static constexpr const char16_t* emptyLineText = u"--- empty ---\n";
  static constexpr const char16_t* openConflictText = u"--- Merge Conflict ---\n";

  MergeConflictView(std::shared_ptr<MergeConflict> mergeConflict, MergeConflictPart viewMode);

  const QString& text() const { return text_; }
  const std::shared_ptr<MergeConflict>& mergeConflict() const { return mergeConflict_; }
  const std::vector<Chunk>& chunks() const { return chunks_; }
  MergeConflictPart viewMode() const { return viewMode_; }
  Range range() const { return {0, text_.size()}; }

  // Every line (service lines included) that the half-open range meets, in order; an
  // empty range gives the line it stands in.
  std::vector<const Line*> lines(Range range) const;
  const Line* lineAt(qsizetype offset) const;
  const Chunk* chunkAt(qsizetype offset) const;
  // The pane's line behind `line`, skipping lines of no length.
  const Line* nextLine(const Line* line) const;

  // Edits of the model through the pane's offsets. Both log what they do and refuse
  // service lines.
  void removeRange(Range range) const;
  void insert(qsizetype location, const QString& string) const;
  bool meldWith(const Line& first, const Line& second) const;

 private:
  std::shared_ptr<MergeConflict> mergeConflict_;
  MergeConflictPart viewMode_;
  QString text_;
  std::vector<Chunk> chunks_;
  std::vector<const Line*> allLines_;  // every line with text, in order
};
