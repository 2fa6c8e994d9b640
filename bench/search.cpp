// search.message: time until the first match of a message search is marked in the rows,
// against git log printing its first line.
// search.content: a whole content search (at most 1000 matches), against git log alone.
#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <unistd.h>

#include "Git/Commands/Revision/RevisionSearchGitCommand.h"
#include "Graph/RevisionSearch.h"
#include "support/BenchSupport.h"

namespace {

using Clock = std::chrono::steady_clock;

// git alone: from the start until its first line has arrived.
double gitFirstLineSeconds(const QString& repo, const QStringList& args) {
  const auto start = Clock::now();
  Task task;
  const int out = Bench::launchGit(task, repo, args);
  char buffer[4096];
  double first = -1;
  ssize_t n = 0;
  while (first < 0 && (n = ::read(out, buffer, sizeof buffer)) > 0) {
    for (ssize_t i = 0; i < n; ++i) {
      if (buffer[i] == '\n') {
        first = std::chrono::duration<double>(Clock::now() - start).count();
        break;
      }
    }
  }
  task.interrupt();
  while (::read(out, buffer, sizeof buffer) > 0) {
  }
  ::close(out);
  task.waitForExit();
  return first;
}

}  // namespace

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString name = QString::fromLocal8Bit(argv[1]);
  const QString repo = QString::fromLocal8Bit(argv[2]);
  const GitModule module = Bench::moduleAt(repo);

  if (name == QStringLiteral("search.message")) {
    // The rows the matches are looked for in, read once as the commit list would.
    auto revisions = Bench::loadHistory(module);
    if (!revisions) {
      std::fprintf(stderr, "search.message: cannot read the history\n");
      return 1;
    }
    auto source = std::make_shared<RevisionGraphSource>();
    source->revisions = std::make_shared<const RevisionList>(revisions.value());
    RevisionGraph graph;
    graph.update(source);
    const RevisionSearchQuery query{RevisionSearchType::message, RevisionSearchScope::repository, QStringLiteral("tune")};
    int row = -1;
    const double ours = Bench::medianSeconds([&] {
      RevisionSearch search(&graph);
      search.start(query.type, query.searchString);
      JobProgress progress;
      row = -1;
      RevisionSearchGitCommand::execute(
          module, query,
          [&](RevisionWithFiles match) {
            if (row >= 0) return;
            row = search.recordMatch(match.revision->sha()).value_or(-1);
            progress.cancel();  // the figure ends at the first mark
          },
          &progress);
    });
    // The reference is the moment of git's first line, not the end of its run.
    const double first = Bench::medianOf([&] { return gitFirstLineSeconds(repo, RevisionSearchGitCommand::arguments(query)); });
    Bench::report(argv[1], ours * 1000, "ms", first * 1000, "ms");
    std::fprintf(stderr, "search.message: first match at row %d\n", row);
    return row >= 0 ? 0 : 1;
  }

  // search.content
  const RevisionSearchQuery query{RevisionSearchType::diffContent, RevisionSearchScope::repository, QStringLiteral("lane token")};
  int matches = 0;
  const double ours = Bench::medianSeconds(
      [&] {
        matches = 0;
        RevisionSearchGitCommand::execute(module, query, [&](RevisionWithFiles) { ++matches; }, nullptr);
      },
      3);
  const double ref = Bench::medianSeconds([&] { Bench::runGitToDevNull(repo, RevisionSearchGitCommand::arguments(query)); }, 3);
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "search.content: %d matches\n", matches);
  return 0;
}
