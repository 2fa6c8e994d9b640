// refresh.small: the refresh after one file of the work tree changed (the status bits a
// file change sets), against a full refresh of the same repository. The small refresh
// must not read the log; a run that starts "git log" fails.
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <atomic>
#include <cstdio>

#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"
#include "Git/Process/Task.h"
#include "Jobs/JobQueue.h"
#include "Repository/RepositoryController.h"
#include "support/BenchSupport.h"
#include "support/InterleavedTiming.h"

namespace {

std::atomic<int> logLaunches{0};

void countLogs(const QStringList& arguments) {
  for (const QString& argument : arguments) {
    if (argument.startsWith(QLatin1Char('-'))) continue;
    if (argument == QLatin1String("log")) ++logLaunches;
    return;
  }
}

// Starts a refresh and runs the event loop until its results are in place.
bool refreshAndWait(RepositoryController& controller, const std::function<void()>& start) {
  QEventLoop loop;
  bool failed = false;
  auto finished = QObject::connect(&controller, &RepositoryController::refreshFinished, &loop, &QEventLoop::quit);
  auto failure = QObject::connect(&controller, &RepositoryController::refreshFailed, &loop, [&] { failed = true; });
  QTimer::singleShot(600000, &loop, [&] { failed = true; loop.quit(); });
  start();
  loop.exec();
  QObject::disconnect(finished);
  QObject::disconnect(failure);
  return !failed;
}

}  // namespace

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  auto module = GetGitDirectoryGitCommand::execute(QString::fromLocal8Bit(argv[2]));
  if (!module) {
    std::fprintf(stderr, "%s: not a repository\n", argv[1]);
    return 1;
  }
  RepositoryController controller(module.value(), std::make_shared<JobQueue>());
  if (!refreshAndWait(controller, [&] { controller.refresh(); })) {
    std::fprintf(stderr, "%s: the first refresh failed\n", argv[1]);
    return 1;
  }

  // One untracked file that the small refresh has to find; removed at the end.
  const QString touched = module.value().repositoryPath + QStringLiteral("/jelv-bench-touched.txt");
  int round = 0;
  bool ok = true;
  int smallLogs = 0;
  int fullLogs = 0;  // proves that the count sees the log at all
  const auto [ours, ref] = Bench::interleavedMedianSeconds(
      [&] {
        QFile file(touched);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(QByteArray::number(++round) + '\n');
        file.close();
        const int before = logLaunches.load();
        Task::setLaunchObserver(&countLogs);
        ok = refreshAndWait(controller, [&] { controller.refreshStatus(); }) && ok;
        Task::setLaunchObserver(nullptr);
        smallLogs += logLaunches.load() - before;
        if (!controller.repositoryStatus() || controller.repositoryStatus()->changedFilesCount < 1) ok = false;
      },
      [&] {
        const int before = logLaunches.load();
        Task::setLaunchObserver(&countLogs);
        ok = refreshAndWait(controller, [&] { controller.refresh(); }) && ok;
        Task::setLaunchObserver(nullptr);
        fullLogs += logLaunches.load() - before;
      },
      7);
  QFile::remove(touched);

  std::fprintf(stderr, "refresh.small: git log ran %d times in the small refreshes, %d in the full ones; %zu revisions\n",
               smallLogs, fullLogs, controller.repositoryData() ? controller.repositoryData()->revisions->size() : size_t(0));
  if (!ok || smallLogs != 0 || fullLogs == 0) {
    std::fprintf(stderr, "%s: %s\n", argv[1], !ok ? "a refresh failed" : smallLogs ? "the small refresh read the log" : "no log run was seen");
    return 1;
  }
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  return 0;
}
