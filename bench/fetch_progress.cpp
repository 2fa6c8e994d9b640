// fetch.progress: the whole history fetched from a local smart-HTTP server through the
// fetch command (progress parsed from git's meters, messages to the job's log), against
// the same `git fetch` alone, alternately in one run.
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>

#include "Git/Commands/Remotes/FetchGitCommand.h"
#include "Git/Process/Task.h"
#include "Jobs/JobProgress.h"
#include "support/BenchSupport.h"
#include "support/InterleavedTiming.h"
#include "../tests/support/GitHttpServer.h"

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString source = QString::fromLocal8Bit(argv[2]);
  GitHttpServer server(QStringLiteral("bench"), QString());
  QString why;
  if (!server.start(&why)) {
    std::fprintf(stderr, "fetch.progress: no server: %s\n", qPrintable(why));
    return 1;
  }
  const QString bare = server.createBareRepository(QStringLiteral("history.git"));
  Bench::git(source, {QStringLiteral("push"), QStringLiteral("-q"), bare, QStringLiteral("+refs/heads/*:refs/heads/*")});
  const QString url = server.url(QStringLiteral("history.git"));

  QTemporaryDir scratch;
  int round = 0;
  // Each run fetches everything into a new empty repository.
  auto freshRepository = [&] {
    const QString path = scratch.filePath(QStringLiteral("r%1").arg(round++));
    QDir().mkpath(path);
    Bench::git(path, {QStringLiteral("init"), QStringLiteral("-q")});
    Bench::git(path, {QStringLiteral("remote"), QStringLiteral("add"), QStringLiteral("origin"), url});
    return path;
  };
  const QStringList args = FetchGitCommand::arguments(FetchTarget::ofRemote(QStringLiteral("origin")), {});
  bool failed = false;
  long logLength = 0;
  const auto [ours, ref] = Bench::interleavedMedianSeconds(
      [&] {
        const QString path = freshRepository();
        JobProgress progress;
        const GitVoidResult result = FetchGitCommand::execute(GitModule{path, path + QStringLiteral("/.git"), std::nullopt},
                                                              FetchTarget::ofRemote(QStringLiteral("origin")), {}, progress);
        failed = failed || !result;
        logLength = progress.output().size();
        QDir(path).removeRecursively();
      },
      [&] {
        const QString path = freshRepository();
        // git alone, both pipes read and dropped.
        Task task;
        task.launchPath = QStringLiteral("/usr/bin/git");
        task.arguments = args;
        task.environment = Task::Environment::current();
        task.currentDirectory = path;
        task.launch();
        QByteArray out, err;
        Task::readBoth(task.takeStdout(), task.takeStderr(), out, err);
        failed = failed || task.waitForExit() != 0;
        QDir(path).removeRecursively();
      },
      3);
  if (failed) {
    std::fprintf(stderr, "fetch.progress: the fetch failed\n");
    return 1;
  }
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "fetch.progress: job log of %ld characters\n", logLength);
  return 0;
}
