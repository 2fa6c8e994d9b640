// log.stream: the commit log streamed through the line reader, against git alone.
#include <QCoreApplication>
#include <cstdio>

#include "Git/Process/GitRequest.h"
#include "support/BenchSupport.h"

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString repo = QString::fromLocal8Bit(argv[2]);
  const QStringList args = {QStringLiteral("log"), QStringLiteral("HEAD"), QStringLiteral("--branches"), QStringLiteral("--remotes"),
                            QStringLiteral("--tags"), QStringLiteral("--max-count=50000"), QStringLiteral("--no-show-signature"),
                            QStringLiteral("--topo-order"), QStringLiteral("--pretty=format:%H%n%T%n%P%n%an%n%ae%n%at%n%s")};
  long lines = 0;
  const long rssBefore = Bench::currentRssBytes();
  const double ours = Bench::medianSeconds([&] {
    lines = 0;
    GitStreamReaderResponse response = GitRequest(repo, args).executeWithReader();
    if (!response.isSuccess() || !response.outputReader) return;
    while (auto line = response.outputReader->nextLine()) ++lines;
    response.finish();
  });
  const long rssGrowth = Bench::peakRssBytes() - rssBefore;
  const double ref = Bench::medianSeconds([&] { Bench::runGitToDevNull(repo, args); });
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "log.stream: %ld lines, peak memory growth %ld KiB\n", lines, rssGrowth / 1024);
  return 0;
}
