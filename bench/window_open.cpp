// open.commitgraph: a 50,000-commit history opened without and with git's commit-graph
// file: first paint of the commit list and full load (data and status), each against
// "git log" of the same list without the file.
// open.500k: a 500,000-commit history with 200 branches: the list painted with the
// newest 50,000 commits loaded, against "git log" of that list alone; and the peak
// memory of the application.
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Repository/RepositoryView.h"
#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"
#include "Git/Commands/Repository/WriteCommitGraphGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Jobs/JobQueue.h"
#include "support/BenchSupport.h"

namespace {

struct OpenTimes {
  double firstPaint = -1;
  double loaded = -1;
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

OpenTimes openOnce(const GitModule& module) {
  OpenTimes times;
  QElapsedTimer timer;
  timer.start();
  auto queue = std::make_shared<JobQueue>();
  {
    RepositoryView view(module, queue);
    view.resize(1200, 760);
    FirstPaint paint(view.commitList(), timer, times.firstPaint);
    view.commitList()->viewport()->installEventFilter(&paint);
    QObject::connect(&view, &RepositoryView::snapshotLoaded, [&] {
      if (times.loaded < 0) times.loaded = timer.nsecsElapsed() / 1e6;
    });
    view.show();
    while ((times.firstPaint < 0 || times.loaded < 0) && timer.elapsed() < 600000) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    view.commitList()->viewport()->removeEventFilter(&paint);
  }
  queue->cancelAllTasks();
  queue->waitForDone();
  return times;
}

// The median of three opens after a warm-up.
OpenTimes medianOpen(const GitModule& module) {
  openOnce(module);
  std::vector<OpenTimes> runs;
  for (int i = 0; i < 3; ++i) runs.push_back(openOnce(module));
  std::sort(runs.begin(), runs.end(), [](const OpenTimes& a, const OpenTimes& b) { return a.firstPaint < b.firstPaint; });
  const double paint = runs[1].firstPaint;
  std::sort(runs.begin(), runs.end(), [](const OpenTimes& a, const OpenTimes& b) { return a.loaded < b.loaded; });
  return {paint, runs[1].loaded};
}

double gitLogMs(const GitModule& module) {
  const QStringList args = GetRevisionsGitCommand::arguments(GetRevisionsGitCommand::useTopologicalCommitOrder(), false,
                                                             GetRevisionsGitCommand::maxCommitCount());
  return Bench::medianSeconds([&] { Bench::runGitToDevNull(module.repositoryPath, args); }, 3) * 1000;
}

void removeCommitGraph(const QString& repo) {
  QDir(repo + QStringLiteral("/.git/objects/info/commit-graphs")).removeRecursively();
  QFile::remove(repo + QStringLiteral("/.git/objects/info/commit-graph"));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: %s NAME REPOSITORY\n", argv[0]);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString name = QString::fromLocal8Bit(argv[1]);
  const QString source = QString::fromLocal8Bit(argv[2]);

  if (name == QStringLiteral("open.commitgraph")) {
    // A clone of our own, so the file can come and go without touching the original.
    QTemporaryDir dir;
    const QString repo = dir.path() + QStringLiteral("/repo");
    Bench::git(dir.path(), {QStringLiteral("clone"), QStringLiteral("-q"), QStringLiteral("--local"), source, repo});
    removeCommitGraph(repo);
    auto module = GetGitDirectoryGitCommand::execute(repo);
    if (!module) return 1;
    const double ref = gitLogMs(module.value());
    const OpenTimes without = medianOpen(module.value());
    if (!WriteCommitGraphGitCommand::execute(module.value(), false)) return 1;
    const OpenTimes with = medianOpen(module.value());
    Bench::report("open.commitgraph.firstpaint.without", without.firstPaint, "ms", ref, "ms");
    Bench::report("open.commitgraph.firstpaint.with", with.firstPaint, "ms", ref, "ms");
    Bench::report("open.commitgraph.load.without", without.loaded, "ms", ref, "ms");
    Bench::report("open.commitgraph.load.with", with.loaded, "ms", ref, "ms");
    return 0;
  }

  // open.500k
  auto module = GetGitDirectoryGitCommand::execute(source);
  if (!module) return 1;
  const OpenTimes times = medianOpen(module.value());
  const double ref = gitLogMs(module.value());
  Bench::report(argv[1], times.firstPaint, "ms", ref, "ms");
  std::printf("%s.peak ours=%.1fMiB\n", argv[1], Bench::peakRssBytes() / 1048576.0);
  std::fprintf(stderr, "%s: full load (data and status) %.0f ms\n", argv[1], times.loaded);
  return 0;
}
