#pragma once
#include <QWidget>
#include <functional>
#include <memory>

class JobQueue;
class Job;
class QLabel;
class QProgressBar;
class QToolButton;
class QTimer;

// The line under a repository: the running (or just finished) job with its cancel
// button and a thin bar, else the repository's own line. Polls the queue every 0.2 s.
class RepositoryStatusBar : public QWidget {
  Q_OBJECT
 public:
  RepositoryStatusBar(std::shared_ptr<JobQueue> queue, std::function<QString()> repositoryLine, QWidget* parent = nullptr);

  QString text() const;
  bool isCancelVisible() const;
  bool isBarVisible() const;
  void poll();

 Q_SIGNALS:
  void activityRequested();

 private:
  std::shared_ptr<JobQueue> queue_;
  std::function<QString()> repositoryLine_;
  std::weak_ptr<Job> shownJob_;
  QLabel* label_;
  QProgressBar* bar_;
  QToolButton* cancel_;
  QToolButton* activity_;
  QTimer* timer_;
};
