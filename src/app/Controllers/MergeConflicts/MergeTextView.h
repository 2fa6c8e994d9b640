#pragma once
// A pane of the merge editor. Its text is always the one its MergeConflictView
// generated; the result pane never applies an edit itself: each key press, paste, cut
// and undo becomes a range and a replacement handed to the SideBySideMergeController,
// which changes the model and sets every pane's text anew.
#include <QPlainTextEdit>
#include <vector>

#include "Git/Merge/SideBySideMergeController.h"

class MergeTextView : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit MergeTextView(MergeConflictPart part, QWidget* parent = nullptr);

  MergeConflictPart part() const { return part_; }
  void setController(SideBySideMergeController* controller) { controller_ = controller; }
  const MergeConflictView* mergeConflictView() const;
  // Takes the view's text, keeping the scroll position, and colours its lines.
  void reload();

  // The edit the result pane asks for: through the model, recorded for undo.
  bool requestEdit(qsizetype start, qsizetype end, const QString& replacement, bool recordUndo = true);
  bool undo();
  bool redo();
  // Dropped text, inserted at `at`; `move` takes the selection away from where it was.
  void dropText(qsizetype at, const QString& text, bool move);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  bool canInsertFromMimeData(const QMimeData*) const override { return false; }
  // Text dropped on the result goes through the model like a paste; a drag inside the
  // result moves its selection, in two model edits undone as one.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

  SideBySideMergeController* controller_ = nullptr;

 private:
  struct Edit {
    qsizetype start;
    QString removed;
    QString inserted;
    bool withPrevious = false;  // undone and redone together with the edit before it
  };
  bool acceptsDrop(const QDropEvent* event) const;
  void paste();
  void cut();
  void colourLines();

  MergeConflictPart part_;
  std::vector<Edit> undoStack_;
  std::vector<Edit> redoStack_;
};
