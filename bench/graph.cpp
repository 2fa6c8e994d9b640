// graph.all: every row of the commit graph (visible rows and all lane blocks) for the
// loaded history, against "git log" with the log read's arguments to /dev/null; the
// target is a tenth of the log's time.
// graph.wide: the same over a history of 100 long-lived branches side by side, where
// every row has many lanes.
// graph.firstblock: the visible rows and the first block of 1024 lane rows, what the
// list needs before it paints; against "git log" with the same arguments limited to 1024 commits.
#include <QCoreApplication>
#include <cstdio>
#include <cstring>

#include "Git/Commands/Repository/GetHeadGitCommand.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Graph/GraphManager.h"
#include "Graph/RevisionGraph.h"
#include "Jobs/JobProgress.h"
#include "support/BenchSupport.h"
#include "support/InterleavedTiming.h"

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString repo = QString::fromLocal8Bit(argv[2]);
  const GitModule module = Bench::moduleAt(repo);
  const bool all = std::strcmp(argv[1], "graph.all") == 0 || std::strcmp(argv[1], "graph.wide") == 0;

  auto head = GetHeadGitCommand::execute(module);
  auto references = GetReferencesGitCommand::execute(module, Subdomain::references());
  JobProgress progress;
  const bool topological = GetRevisionsGitCommand::useTopologicalCommitOrder();
  auto revisions = GetRevisionsGitCommand::execute(module, topological, false, progress);
  if (!head || !references || !revisions || revisions.value().empty()) {
    std::fprintf(stderr, "%s: cannot read the repository\n", argv[1]);
    return 1;
  }
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(head.value(), std::nullopt, references.value());
  source->revisions = std::make_shared<const RevisionList>(std::move(revisions).value());

  RevisionGraph graph;
  GraphManager manager;
  int rows = 0;
  int lastRow = -1;
  auto build = [&](bool everyRow) {
    graph.update(source);
    manager.reset(&graph);
    rows = graph.count();
    if (rows == 0) return;
    if (everyRow) {
      // The list asks block by block while scrolling; do the same.
      for (int row = 0; row < rows; row += GraphManager::blockSize) manager.precalculate(row);
      manager.precalculate(rows - 1);
    } else {
      manager.precalculate(0);
    }
    lastRow = manager.lastPrecalculatedRow();
  };

  const QStringList args =
      GetRevisionsGitCommand::arguments(topological, false, all ? Preferences::shared().maxCommitCount() : GraphManager::blockSize);
  const auto [ours, ref] = Bench::interleavedMedianSeconds([&] { build(all); }, [&] { Bench::runGitToDevNull(repo, args); }, 9);
  if (all && lastRow != rows - 1) {
    std::fprintf(stderr, "graph.all: only %d of %d rows computed\n", lastRow + 1, rows);
    return 1;
  }
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::size_t widest = 0;
  double lanes = 0;
  for (int row = 0; row <= lastRow; ++row) {
    widest = std::max(widest, manager.graphItem(row).lines.size());
    lanes += static_cast<double>(manager.graphItem(row).lines.size());
  }
  std::fprintf(stderr, "%s: %d visible rows, %d lane rows computed, lanes per row %.1f on average, %zu at most\n", argv[1], rows,
               lastRow + 1, lastRow >= 0 ? lanes / (lastRow + 1) : 0.0, widest);
  return 0;
}
