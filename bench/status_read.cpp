// status.100k: the status read of 100,000 modified files (git status, decoding, parsing
// and the sort) against `git status --porcelain -z` with the same arguments alone.
//
// The repository is made once (support/ChangedFilesRepository.h).
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "support/BenchSupport.h"
#include "support/ChangedFilesRepository.h"


int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s NAME [REPOSITORY]\n", argv[0]);
    return 2;
  }
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();

  const QString repo = ChangedFilesRepository::ensure();
  if (repo.isEmpty()) {
    std::fprintf(stderr, "status.100k: cannot generate the repository\n");
    return 1;
  }

  const GitModule module = Bench::moduleAt(repo);
  const QStringList args = GetChangedFilesGitCommand::arguments(false, false);
  int files = 0;
  bool failed = false;
  const auto readStatus = [&] {
    auto result = GetChangedFilesGitCommand::execute(module, {}, false, false);
    failed = failed || !result;
    files = result ? result.value().filesCount : 0;
  };
  const auto gitAlone = [&] { Bench::runGitToDevNull(repo, args); };
  // Runs alternate, so that a change of load on a shared machine reaches both sides.
  readStatus();
  gitAlone();
  std::vector<double> oursTimes;
  std::vector<double> refTimes;
  for (int i = 0; i < 7; ++i) {
    oursTimes.push_back(Bench::seconds(readStatus));
    refTimes.push_back(Bench::seconds(gitAlone));
  }
  std::sort(oursTimes.begin(), oursTimes.end());
  std::sort(refTimes.begin(), refTimes.end());
  const double ours = oursTimes[oursTimes.size() / 2];
  const double ref = refTimes[refTimes.size() / 2];
  if (failed || files != ChangedFilesRepository::kDirectories * ChangedFilesRepository::kFilesPerDirectory) {
    std::fprintf(stderr, "status.100k: expected %d changed files, read %d\n",
                 ChangedFilesRepository::kDirectories * ChangedFilesRepository::kFilesPerDirectory, files);
    return 1;
  }

  // Our share alone, on the output of one run, for the report on stderr.
  const GitResponse response = GitRequest(module, args).execute();
  QElapsedTimer timer;
  timer.start();
  const auto parsed = GetChangedFilesGitCommand::parse(response.output, {});
  const double parseMs = timer.nsecsElapsed() / 1e6;

  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "status.100k: %d files, parse and sort alone %.1f ms\n", parsed.filesCount, parseMs);
  return 0;
}
