// status.100k: the status read of 100,000 modified files (git status, decoding, parsing
// and the sort) against `git status --porcelain -z` with the same arguments alone.
//
// The repository is made once and kept under bench/data/status-100k: one commit of
// 100,000 small files written with fast-import, checked out, then every file rewritten.
// Nothing is ever staged, so every run sees the same 100,000 changed files.
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

namespace {

constexpr int kDirectories = 100;
constexpr int kFilesPerDirectory = 1000;

QString relativePath(int directory, int file) {
  return QStringLiteral("dir%1/File %2.txt").arg(directory, 3, 10, QLatin1Char('0')).arg(file);
}

QString dataDirectory() {
  const QByteArray fromEnvironment = qgetenv("JELV_BENCH_DATA");
  if (!fromEnvironment.isEmpty()) return QString::fromLocal8Bit(fromEnvironment);
  const QString besideBuild = QCoreApplication::applicationDirPath() + QStringLiteral("/../../bench/data");
  if (QFileInfo(besideBuild).isDir()) return QDir::cleanPath(besideBuild);
  return QDir::tempPath() + QStringLiteral("/jelv-bench-data");
}

bool run(const QString& directory, const QStringList& args, const QByteArray& input = {}) {
  QProcess process;
  process.setWorkingDirectory(directory);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QStringLiteral("/usr/bin/git"), args);
  if (!process.waitForStarted()) return false;
  qint64 written = 0;
  while (written < input.size()) {
    const qint64 n = process.write(input.constData() + written, input.size() - written);
    if (n <= 0) return false;
    written += n;
    process.waitForBytesWritten(-1);
  }
  process.closeWriteChannel();
  process.waitForFinished(-1);
  return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool generate(const QString& repo) {
  QDir(repo).removeRecursively();
  QDir().mkpath(repo);
  if (!run(repo, {QStringLiteral("init"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("main")})) return false;

  // One blob serves every file; the commit lists 100,000 paths.
  QByteArray stream = "blob\nmark :1\ndata 9\noriginal\n\n";
  stream += "commit refs/heads/main\nauthor Bench <bench@example.com> 1700000000 +0000\n"
            "committer Bench <bench@example.com> 1700000000 +0000\ndata 5\nfiles\n";
  for (int d = 0; d < kDirectories; ++d) {
    for (int f = 0; f < kFilesPerDirectory; ++f) stream += "M 100644 :1 " + relativePath(d, f).toUtf8() + '\n';
  }
  stream += "done\n";
  if (!run(repo, {QStringLiteral("fast-import"), QStringLiteral("--quiet"), QStringLiteral("--done")}, stream)) return false;
  if (!run(repo, {QStringLiteral("reset"), QStringLiteral("-q"), QStringLiteral("--hard"), QStringLiteral("main")})) return false;

  for (int d = 0; d < kDirectories; ++d) {
    for (int f = 0; f < kFilesPerDirectory; ++f) {
      QFile file(repo + QLatin1Char('/') + relativePath(d, f));
      if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
      file.write("modified " + QByteArray::number(f) + '\n');
    }
  }
  QFile marker(repo + QStringLiteral("/.git/jelv-bench-generated"));
  return marker.open(QIODevice::WriteOnly);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s NAME [REPOSITORY]\n", argv[0]);
    return 2;
  }
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();

  const QString repo = dataDirectory() + QStringLiteral("/status-100k");
  if (!QFileInfo::exists(repo + QStringLiteral("/.git/jelv-bench-generated"))) {
    std::fprintf(stderr, "Generating 100,000 changed files in %s ...\n", qPrintable(repo));
    if (!generate(repo)) {
      std::fprintf(stderr, "status.100k: cannot generate the repository\n");
      return 1;
    }
  }

  const GitModule module{repo, repo + QStringLiteral("/.git"), std::nullopt};
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
  if (failed || files != kDirectories * kFilesPerDirectory) {
    std::fprintf(stderr, "status.100k: expected %d changed files, read %d\n", kDirectories * kFilesPerDirectory, files);
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
