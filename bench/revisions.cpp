// revisions.load: the commit list read through GetRevisionsGitCommand, against
// "git log" with the same arguments to /dev/null.
// revisions.memory: bytes that the loaded list holds per revision (heap in use after
// the load minus before it, the list kept alive); peak RSS growth goes to stderr.
#include <QCoreApplication>
#include <cstdio>
#include <cstring>
#include <malloc.h>

#include "support/BenchSupport.h"
#include "support/InterleavedTiming.h"

namespace {

size_t heapInUse() {
  const struct mallinfo2 info = ::mallinfo2();
  return info.uordblks + info.hblkhd;  // small chunks plus mmap'd blocks
}

}  // namespace

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString repo = QString::fromLocal8Bit(argv[2]);
  const GitModule module = Bench::moduleAt(repo);
  const bool memory = std::strcmp(argv[1], "revisions.memory") == 0;

  if (memory) {
    const size_t before = heapInUse();
    const long rssBefore = Bench::currentRssBytes();
    auto result = Bench::loadHistory(module);
    if (!result.isSuccess() || result.value().empty()) {
      std::fprintf(stderr, "%s: cannot read the history: %s\n", argv[1], qPrintable(describe(result.error())));
      return 1;
    }
    const size_t count = result.value().size();
    const double perRevision = double(heapInUse() - before) / double(count);
    const double peakPerRevision = double(Bench::peakRssBytes() - rssBefore) / double(count);
    Bench::report(argv[1], perRevision, "B");
    std::fprintf(stderr, "revisions.memory: %zu revisions, peak RSS growth %.0f B per revision\n", count, peakPerRevision);
    return 0;
  }

  const QStringList args =
      GetRevisionsGitCommand::arguments(true, false, Preferences::shared().maxCommitCount());
  size_t count = 0;
  bool failed = false;
  const auto [ours, ref] = Bench::interleavedMedianSeconds(
      [&] {
        auto result = Bench::loadHistory(module);
        failed = failed || !result.isSuccess();
        count = result.isSuccess() ? result.value().size() : 0;
      },
      [&] { Bench::runGitToDevNull(repo, args); }, 7);
  if (failed) {
    std::fprintf(stderr, "%s: cannot read the history\n", argv[1]);
    return 1;
  }
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "revisions.load: %zu revisions\n", count);
  return 0;
}
