#pragma once
#include <QPointer>
#include <QTableView>

#include "Controllers/CommitList/CommitListModel.h"

// The commit list: fixed-height rows so that only visible rows are asked for, columns
// for graph and subject, author, date and short sha.
class CommitListDelegate;

class CommitListView : public QTableView {
  Q_OBJECT
 public:
  explicit CommitListView(QWidget* parent = nullptr);
  CommitListModel* commitModel() const { return model_; }
  void setSource(std::shared_ptr<const RevisionGraphSource> source);
  // Selects the row of the sha, keeping it in view; false when it isn't listed.
  bool selectSha(const Sha& sha);
  RevisionPtr currentRevision() const;
  // Every selected commit in list order (newest first); the current one when none is selected.
  std::vector<RevisionPtr> selectedRevisions() const;

 Q_SIGNALS:
  void currentRevisionChanged(RevisionPtr revision);
  // The button of a cut history's last row: read all of it.
  void loadAllRequested();

 public:
  // The full names of the selected commits, one a line, newest first.
  QString selectedShasText() const;
  // Puts them on the clipboard (Ctrl+C).
  void copySelectedShas() const;

  // The part of the Description column the lanes may take; dragging the lanes' edge
  // changes it and new tabs start with the last value.
  double graphCapFraction() const;
  void setGraphCapFraction(double fraction);
  CommitListDelegate* commitDelegate() const { return delegate_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  // Home and End go to the first and last commit, not to the row's first and last column.
  QModelIndex moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  // Whether `position` (in the viewport) is on the edge of a row whose lanes are clipped.
  bool onGraphEdge(const QPoint& position) const;
  // The note and button of a cut history's last row.
  void updateCutRow();

  CommitListModel* model_;
  CommitListDelegate* delegate_;
  bool draggingGraphEdge_ = false;
  QPointer<QWidget> cutRowBar_;
  bool restoringSelection_ = false;
};
