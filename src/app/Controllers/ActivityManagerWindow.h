#pragma once
#include <QWidget>
#include <memory>

class JobQueue;
class JobActivityList;
class QTreeWidget;
class QLabel;
class GitOutputView;
class QTimer;
class QPushButton;

// "Activity Manager": the jobs of one tab, newest on top, with the selected job's
// status and its output. Only rows whose job changed are redrawn.
class ActivityManagerWindow : public QWidget {
  Q_OBJECT
 public:
  explicit ActivityManagerWindow(std::shared_ptr<JobQueue> queue, QWidget* parent = nullptr);
  ~ActivityManagerWindow() override;

  void tick();
  int rowCount() const;
  QString outputText() const;
  // Cancels the selected job; enabled while it runs.
  QPushButton* cancelButton() const { return cancel_; }

 private:
  void showSelected();

  std::shared_ptr<JobQueue> queue_;
  std::unique_ptr<JobActivityList> list_;
  QTreeWidget* rows_;
  QLabel* header_;
  GitOutputView* output_;
  QTimer* timer_;
  QPushButton* cancel_;
};
