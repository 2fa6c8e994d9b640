#pragma once
// The blame of one file at one revision, in a window of its own beside the repository.
// A click on a run of lines selects its commit in the history; the run's menu blames
// the file again as it was before that commit.
#include <QDialog>
#include <functional>
#include <memory>

#include "Controls/DelayedAction.h"
#include "Models/BlameChunk.h"
#include "Models/GitModule.h"

class BlameView;
class Job;
class JobQueue;
class QLabel;

class BlameWindowController : public QDialog {
  Q_OBJECT
 public:
  BlameWindowController(GitModule module, std::shared_ptr<JobQueue> queue, std::function<void(const QString&)> selectRevision,
                        QWidget* parent = nullptr);
  ~BlameWindowController() override;

  // Shows the blame of args, after a short pause when called in quick succession.
  void load(const BlameArgs& args);

  BlameView* blameView() const { return view_; }
  QLabel* statusLabel() const { return status_; }
  const BlameArgs& args() const { return args_; }

 Q_SIGNALS:
  // The blame is shown, or the reason it isn't.
  void loaded();

 private:
  void read(const BlameArgs& args);
  void showRevisionMenu(const QString& sha, const QPoint& globalPosition);

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  std::function<void(const QString&)> selectRevision_;
  DelayedAction<BlameArgs> delayedLoad_;
  std::weak_ptr<Job> job_;
  BlameArgs args_;
  QLabel* title_;
  QLabel* status_;
  BlameView* view_;
};
