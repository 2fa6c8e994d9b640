#pragma once
// A diff that stages to the line. It shows one PatchView document (the unified layout or
// one side of the side-by-side one), paints each row by what it is, and keeps the target
// of the stage bar: the hunk under the mouse, or the selected lines, which win while the
// selection stands. The keyboard reaches the same target: the selection, else the hunk
// at the text cursor.
#include <QPlainTextEdit>
#include <optional>
#include <vector>

#include "Models/PatchView.h"
#include "Models/SelectionMode.h"

class DiffSelectionPopoverController;
class QPainter;

// Where the stage bar floats (viewport coordinates) and what it acts on.
struct CommitTextDiffViewChunk {
  QRect rect;
  PatchView::Range range;
  bool manualSelection = false;
  bool operator==(const CommitTextDiffViewChunk&) const = default;
};

class CommitTextDiffView : public QPlainTextEdit {
  Q_OBJECT
 public:
  enum class Numbers { oldAndNew, oldOnly, newOnly };

  explicit CommitTextDiffView(QWidget* parent = nullptr);
  ~CommitTextDiffView() override;

  // Shows a new document and clears the target. A staged file is unstaged by the bar;
  // an unstaged one is staged or discarded.
  void showPatch(PatchView::Document document, Numbers numbers, bool staged);
  // Off for a diff that is only read: no stage bar, no target for the keys.
  void setOperationsEnabled(bool on);
  // The two halves of the side-by-side layout: this view's bar floats in `host`'s column
  // (between the halves) instead of a column of its own, which would take the text's
  // width. One target stands for the pair: a new one on either side ends the other's.
  void shareBarColumnOf(CommitTextDiffView* host);
  const PatchView::Document& patch() const { return patch_; }
  bool isStaged() const { return staged_; }

  const std::optional<CommitTextDiffViewChunk>& activeChunk() const { return activeChunk_; }
  // The patch of the target in a mode; null without a target or without a changed line.
  XPatchPtr activeSelectionPatch(SelectionMode mode) const;
  DiffSelectionPopoverController* stageBar() const { return stageBar_; }
  QWidget* gutter() const { return gutter_; }
  // The changed parts of partly changed rows, marked in a stronger tone.
  const std::vector<PatchView::Range>& wordSpans() const { return wordSpans_; }

  // Moves the text cursor to the next (1) or previous (-1) hunk and makes it the target.
  void goToHunk(int direction);
  // Selects whole rows, as a drag in the gutter does.
  void selectRows(int fromRow, int toRow);
  int rowAt(int y) const;

  int gutterWidth() const;
  void paintGutter(QPaintEvent* event);

 Q_SIGNALS:
  void toggleStageRequested();
  void discardRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class RowKind { fileHeader, hunkHeader, context, removed, added, padding, marker };
  struct Row {
    RowKind kind = RowKind::context;
    std::optional<qint64> oldNumber;
    std::optional<qint64> newNumber;
  };

  void buildRows();
  void paintWordSpans(QPainter& painter, const QRect& area, bool dark);
  void setActiveChunk(std::optional<CommitTextDiffViewChunk> chunk);
  void hoverAt(const QPoint& position);
  void onSelectionChanged();
  // The target for a key or a menu: keeps one that stands, else the hunk at the cursor.
  bool targetForKeyboard();
  std::optional<QRect> rectOf(const PatchView::Range& range) const;
  void refreshGeometry();
  // Room for the line numbers left of the text and for the stage bar right of it.
  void updateMargins();
  // Ends a hover target when the mouse is neither over the text nor over `other`.
  void endHoverUnlessOver(const QWidget* other);
  int barColumnWidth() const;
  qint64 selectedChangedLines(const PatchView::Range& range) const;

  PatchView::Document patch_;
  std::vector<Row> rows_;
  std::vector<PatchView::Range> wordSpans_;
  Numbers numbers_ = Numbers::oldAndNew;
  bool staged_ = false;
  bool operations_ = true;
  std::optional<CommitTextDiffViewChunk> activeChunk_;
  std::optional<QPoint> lastMouseLocation_;
  DiffSelectionPopoverController* stageBar_;
  QWidget* barColumn_;
  QWidget* barHost_;  // the column the bar floats in: barColumn_ or the partner's
  CommitTextDiffView* partner_ = nullptr;
  QWidget* gutter_;
  int digits_ = 1;
};
