// open.commitgraph: a 50,000-commit history opened without and with git's commit-graph
// file: first paint of the commit list and full load (data and status), each against
// "git log" of the same list without the file.
// open.500k: a 500,000-commit history with 200 branches: the list painted with the
// newest 50,000 commits loaded, against "git log" of that list alone; and the peak
// memory of the application.
#include <QTemporaryDir>
#include <cstdio>

#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"
#include "Git/Commands/Repository/WriteCommitGraphGitCommand.h"
#include "support/WindowOpen.h"

namespace {

void removeCommitGraph(const QString& repo) {
  QDir(repo + QStringLiteral("/.git/objects/info/commit-graphs")).removeRecursively();
  QFile::remove(repo + QStringLiteral("/.git/objects/info/commit-graph"));
}

}  // namespace

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
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
    const double ref = Bench::gitLogMs(module.value());
    const Bench::OpenTimes without = Bench::medianOpen(module.value(), true);
    if (!WriteCommitGraphGitCommand::execute(module.value(), false)) return 1;
    const Bench::OpenTimes with = Bench::medianOpen(module.value(), true);
    Bench::report("open.commitgraph.firstpaint.without", without.firstPaint, "ms", ref, "ms");
    Bench::report("open.commitgraph.firstpaint.with", with.firstPaint, "ms", ref, "ms");
    Bench::report("open.commitgraph.load.without", without.loaded, "ms", ref, "ms");
    Bench::report("open.commitgraph.load.with", with.loaded, "ms", ref, "ms");
    return 0;
  }

  // open.500k
  auto module = GetGitDirectoryGitCommand::execute(source);
  if (!module) return 1;
  const Bench::OpenTimes times = Bench::medianOpen(module.value(), true);
  const double ref = Bench::gitLogMs(module.value());
  Bench::report(argv[1], times.firstPaint, "ms", ref, "ms");
  std::printf("%s.peak ours=%.1fMiB\n", argv[1], Bench::peakRssBytes() / 1048576.0);
  std::fprintf(stderr, "%s: full load (data and status) %.0f ms\n", argv[1], times.loaded);
  return 0;
}
