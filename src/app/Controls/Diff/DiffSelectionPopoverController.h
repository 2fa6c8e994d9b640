#pragma once
// The stage bar that floats beside a diff at the hovered hunk or the selected lines. Its
// stage and unstage buttons share one action (the file's side decides which it is);
// discard is offered on the unstaged side only. The buttons stand one above the other
// and keep one width whatever they read, so the column the bar floats in stays narrow
// and never changes.
#include <QFrame>

class QPushButton;

class DiffSelectionPopoverController : public QFrame {
  Q_OBJECT
 public:
  explicit DiffSelectionPopoverController(QWidget* parent = nullptr);

  // A hunk (lines = false) or the selected lines, of which `changedLines` are changes.
  void setTarget(bool staged, bool lines, qint64 changedLines);

  QPushButton* stageButton() const { return stage_; }
  QPushButton* discardButton() const { return discard_; }

 Q_SIGNALS:
  void toggleStage();
  void discard();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPushButton* stage_;
  QPushButton* discard_;
};
