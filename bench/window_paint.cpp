// window.firstpaint: opening a repository until the commit list has painted its first
// rows, against git log with the same arguments alone.
// window.scroll: paging through the whole list once; time per row painted.
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <cstdio>

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Repository/RepositoryView.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Jobs/JobQueue.h"
#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"
#include "support/BenchSupport.h"

namespace {

class FirstPaint : public QObject {
 public:
  explicit FirstPaint(CommitListView* list) : list_(list) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && list_->commitModel()->rowCount() > 0 && !done) {
      done = true;
      QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    }
    return false;
  }
  bool done = false;

 private:
  CommitListView* list_;
};

double openOnce(const GitModule& module) {
  QElapsedTimer timer;
  timer.start();
  auto queue = std::make_shared<JobQueue>();
  RepositoryView view(module, queue);
  view.resize(1200, 800);
  FirstPaint watcher(view.commitList());
  view.commitList()->viewport()->installEventFilter(&watcher);
  view.show();
  QApplication::exec();
  const double ms = timer.nsecsElapsed() / 1e6;
  view.commitList()->viewport()->removeEventFilter(&watcher);
  return ms;
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
  auto module = GetGitDirectoryGitCommand::execute(QString::fromLocal8Bit(argv[2]));
  if (!module) {
    std::fprintf(stderr, "not a repository\n");
    return 1;
  }

  if (name == QStringLiteral("window.firstpaint")) {
    std::vector<double> times;
    openOnce(module.value());  // warm the file cache
    for (int i = 0; i < 3; ++i) times.push_back(openOnce(module.value()));
    std::sort(times.begin(), times.end());
    QStringList args = {QStringLiteral("log"), QStringLiteral("HEAD"), QStringLiteral("--branches"), QStringLiteral("--remotes"),
                        QStringLiteral("--tags"), QStringLiteral("--max-count=%1").arg(GetRevisionsGitCommand::maxCommitCount()),
                        QStringLiteral("--no-show-signature"),
                        GetRevisionsGitCommand::useTopologicalCommitOrder() ? QStringLiteral("--topo-order") : QStringLiteral("--date-order"),
                        QStringLiteral("--pretty=format:%H%n%T%n%P%n%an%n%ae%n%at%n%s")};
    const double ref = Bench::medianSeconds([&] { Bench::runGitToDevNull(module.value().repositoryPath, args); }, 3) * 1000;
    Bench::report(argv[1], times[1], "ms", ref, "ms");
    return 0;
  }

  // window.scroll
  auto queue = std::make_shared<JobQueue>();
  RepositoryView view(module.value(), queue);
  view.resize(1200, 800);
  view.show();
  QElapsedTimer wait;
  wait.start();
  while (view.commitList()->commitModel()->rowCount() == 0 && wait.elapsed() < 120000) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  CommitListView* list = view.commitList();
  const int rowHeight = list->verticalHeader()->defaultSectionSize();
  const int visibleRows = std::max(1, list->viewport()->height() / rowHeight);
  QScrollBar* bar = list->verticalScrollBar();
  long rowsPainted = 0;
  QElapsedTimer timer;
  timer.start();
  for (int value = 0; value <= bar->maximum(); value += visibleRows) {
    bar->setValue(value);
    list->viewport()->repaint();
    rowsPainted += visibleRows;
  }
  const double ms = timer.nsecsElapsed() / 1e6;
  Bench::report(argv[1], ms / static_cast<double>(std::max(1L, rowsPainted)), "ms/row");
  std::fprintf(stderr, "window.scroll: %ld rows in %.0f ms\n", rowsPainted, ms);
  return 0;
}
