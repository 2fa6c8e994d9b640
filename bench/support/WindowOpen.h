#pragma once
// Opens a repository window offscreen and times the commit list's first paint of rows
// and, when asked, the full load; git log of the same list is the reference.
#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <vector>

#include "Controllers/CommitList/CommitListView.h"
#include "UI/JelvDocument.h"
#include "Jobs/JobQueue.h"
#include "support/BenchSupport.h"

namespace Bench {

struct OpenTimes {
  double firstPaint = -1;  // ms
  double loaded = -1;      // ms; stays -1 unless waited for
};

class FirstPaint : public QObject {
 public:
  FirstPaint(CommitListView* list, const QElapsedTimer& timer, double& at) : list_(list), timer_(timer), at_(at) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && at_ < 0 && list_->commitModel()->rowCount() > 0) at_ = timer_.nsecsElapsed() / 1e6;
    return false;
  }

 private:
  CommitListView* list_;
  const QElapsedTimer& timer_;
  double& at_;
};

inline OpenTimes openOnce(const GitModule& module, bool untilLoaded) {
  OpenTimes times;
  QElapsedTimer timer;
  timer.start();
  auto queue = std::make_shared<JobQueue>();
  {
    JelvDocument view(module, queue);
    view.resize(1200, 760);
    FirstPaint paint(view.commitList(), timer, times.firstPaint);
    view.commitList()->viewport()->installEventFilter(&paint);
    QObject::connect(&view, &JelvDocument::snapshotLoaded, [&] {
      if (times.loaded < 0) times.loaded = timer.nsecsElapsed() / 1e6;
    });
    view.show();
    while ((times.firstPaint < 0 || (untilLoaded && times.loaded < 0)) && timer.elapsed() < 600000) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    view.commitList()->viewport()->removeEventFilter(&paint);
  }
  queue->cancelAllTasks();
  queue->waitForDone();
  return times;
}

// The median of three opens after a warm-up, each figure on its own.
inline OpenTimes medianOpen(const GitModule& module, bool untilLoaded) {
  openOnce(module, untilLoaded);
  std::vector<OpenTimes> runs;
  for (int i = 0; i < 3; ++i) runs.push_back(openOnce(module, untilLoaded));
  std::sort(runs.begin(), runs.end(), [](const OpenTimes& a, const OpenTimes& b) { return a.firstPaint < b.firstPaint; });
  const double paint = runs[1].firstPaint;
  std::sort(runs.begin(), runs.end(), [](const OpenTimes& a, const OpenTimes& b) { return a.loaded < b.loaded; });
  return {paint, runs[1].loaded};
}

// git log of the list the window reads, to /dev/null.
inline double gitLogMs(const GitModule& module) {
  const QStringList args = GetRevisionsGitCommand::arguments(GetRevisionsGitCommand::useTopologicalCommitOrder(), false,
                                                             GetRevisionsGitCommand::maxCommitCount());
  return medianSeconds([&] { runGitToDevNull(module.repositoryPath, args); }, 3) * 1000;
}

}  // namespace Bench
