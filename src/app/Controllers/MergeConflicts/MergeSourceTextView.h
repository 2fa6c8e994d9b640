#pragma once
// A side of the merge editor (local or remote), read-only. A click on a line takes it
// into the result or out of it; a double click or the context menu does the same for
// the whole side of its chunk.
#include "Controllers/MergeConflicts/MergeTextView.h"

struct MergeTextViewChunk {
  QRect rect;
  MergeConflictView::Range range;
  MergeConflict::ChunkPtr chunk;
};

class MergeSourceTextView : public MergeTextView {
  Q_OBJECT
 public:
  explicit MergeSourceTextView(MergeConflictPart part, QWidget* parent = nullptr);

  const MergeTextViewChunk& activeChunk() const { return activeChunk_; }
  // The line at a text offset is toggled, as a click does.
  void toggleLine(qsizetype offset);
  void toggleChunk(qsizetype offset);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  MergeTextViewChunk activeChunk_;
};
