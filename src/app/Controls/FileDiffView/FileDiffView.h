#pragma once
// The diff pane of one change: a message (with "Load Diff" for a text held back by its
// size), the two images of a picture, or the text diff. In the staging form the text is
// laid out from the patch's view tree, unified or side by side, and the stage bar's
// actions come out as selection patches for the owner to apply.
#include <QWidget>
#include <optional>
#include <vector>

#include "Controls/Diff/DiffContent.h"
#include "Models/ChangedFile.h"
#include "Models/SelectionMode.h"

class CommitTextDiffView;
class DiffTextView;
class QLabel;
class QPushButton;
class QStackedWidget;
class QToolButton;

class FileDiffView : public QWidget {
  Q_OBJECT
 public:
  enum class Mode { readOnly, staging };
  explicit FileDiffView(Mode mode = Mode::readOnly, QWidget* parent = nullptr);

  void showMessage(const QString& message);
  // `file` says which side a staging diff belongs to. With keepPosition (the same file
  // again after a change to it) the scroll position and the text cursor stay.
  void showContent(DiffContent content, const ChangedFilePtr& file = {}, bool keepPosition = false);

  // Unified or side by side, kept in the preferences: one choice for the staging form,
  // one for the diffs of commits.
  bool isSideBySide() const;
  void setSideBySide(bool sideBySide);

  DiffTextView* textView() const { return text_; }
  CommitTextDiffView* unifiedView() const { return unified_; }
  CommitTextDiffView* leftView() const { return left_; }
  CommitTextDiffView* rightView() const { return right_; }
  QToolButton* layoutButton() const { return layoutButton_; }
  QPushButton* loadLargeButton() const { return loadLarge_; }
  // The page of a conflicted file; made when first shown.
  class ConflictDiffView* conflictView() const { return conflictPage_; }
  // For tests: what the pane shows.
  bool isShowingText() const;
  bool isShowingImages() const;
  bool isOfferingLargeDiff() const;
  QString message() const;
  QString oldImageText() const;
  QString newImageText() const;
  bool hasNewImage() const;
  QString title() const;

 Q_SIGNALS:
  void loadLargeRequested();
  void resolveConflictsRequested();
  // The stage bar, a key or the menu asked to apply the lines of its target (a whole
  // hunk, or lines the user selected).
  void selectionApplyRequested(XPatchPtr patch, SelectionMode mode, bool wholeHunk);

 private:
  QWidget* buildTextPage();
  QString layoutKey() const;
  void layOut(bool keepPosition, std::optional<std::vector<UnifiedDiffRow>> rows = std::nullopt);
  // Follows the stored layout, which the toggle or the preferences window may change.
  void applyLayout();
  void requestApply(CommitTextDiffView* view, bool discard);

  Mode mode_;
  QStackedWidget* stack_;
  QWidget* messagePage_;
  QLabel* message_;
  QPushButton* loadLarge_;
  QWidget* imagePage_;
  QLabel* oldImage_;
  QLabel* newImage_;
  QWidget* textPage_ = nullptr;
  DiffTextView* text_ = nullptr;
  QLabel* title_ = nullptr;
  QToolButton* layoutButton_ = nullptr;
  QStackedWidget* layouts_ = nullptr;
  CommitTextDiffView* unified_ = nullptr;
  CommitTextDiffView* left_ = nullptr;
  CommitTextDiffView* right_ = nullptr;
  QWidget* sideBySidePage_ = nullptr;
  class ConflictDiffView* conflictPage_ = nullptr;
  XPatchPtr patch_;
  ChangedFilePtr file_;
  bool shownSideBySide_ = false;
};
