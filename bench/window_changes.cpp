// changes.firstpaint: opening the local changes page on 100,000 changed files until the
// unstaged list has painted its first rows, against `git status --porcelain -z` with the
// same arguments alone. The repository's controller reads the status for the page, as in
// a tab; the page splits it into the two lists and hands them to lazy models, so the
// figure is the first refresh plus one paint.
#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Jobs/JobQueue.h"
#include "Repository/RepositoryController.h"
#include "support/BenchSupport.h"
#include "support/ChangedFilesRepository.h"

namespace {

class FirstRowsPainted : public QObject {
 public:
  explicit FirstRowsPainted(FileListViewController* list) : list_(list) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && !done && list_->model()->rowCount() > 0) {
      done = true;
      QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    }
    return false;
  }
  bool done = false;

 private:
  FileListViewController* list_;
};

double openOnce(const GitModule& module, int* rows) {
  QElapsedTimer timer;
  timer.start();
  auto queue = std::make_shared<JobQueue>();
  RepositoryController repository(module, queue);
  StageFileViewController view(repository);
  view.resize(1200, 800);
  FirstRowsPainted watcher(view.unstagedList());
  view.unstagedList()->viewport()->installEventFilter(&watcher);
  view.show();
  view.reload();
  QApplication::exec();
  const double ms = timer.nsecsElapsed() / 1e6;
  view.unstagedList()->viewport()->removeEventFilter(&watcher);
  *rows = view.unstagedList()->model()->rowCount();
  queue->waitForDone(30000);
  return ms;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s NAME [REPOSITORY]\n", argv[0]);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString repo = ChangedFilesRepository::ensure();
  if (repo.isEmpty()) {
    std::fprintf(stderr, "%s: cannot generate the repository\n", argv[1]);
    return 1;
  }
  const GitModule module = Bench::moduleAt(repo);
  const QStringList args = GetChangedFilesGitCommand::arguments(false, false);

  int rows = 0;
  openOnce(module, &rows);  // warms the file cache
  Bench::runGitToDevNull(repo, args);
  // Alternating runs, so that a change of load on a shared machine reaches both sides.
  std::vector<double> ours;
  std::vector<double> ref;
  for (int i = 0; i < 5; ++i) {
    ours.push_back(openOnce(module, &rows));
    ref.push_back(Bench::seconds([&] { Bench::runGitToDevNull(repo, args); }) * 1000);
  }
  std::sort(ours.begin(), ours.end());
  std::sort(ref.begin(), ref.end());
  const int expected = ChangedFilesRepository::kDirectories * ChangedFilesRepository::kFilesPerDirectory;
  if (rows != expected) {
    std::fprintf(stderr, "%s: expected %d rows, the list has %d\n", argv[1], expected, rows);
    return 1;
  }
  Bench::report(argv[1], ours[ours.size() / 2], "ms", ref[ref.size() / 2], "ms");
  return 0;
}
