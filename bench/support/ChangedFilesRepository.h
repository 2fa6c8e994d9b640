#pragma once
// The repository of 100,000 changed files that the status and local-changes figures
// read. Made once under bench/data/status-100k: one commit of 100,000 small files written
// with fast-import, checked out, then every file rewritten. Nothing is ever staged, so
// every run sees the same 100,000 changed files.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <cstdio>

namespace ChangedFilesRepository {

inline constexpr int kDirectories = 100;
inline constexpr int kFilesPerDirectory = 1000;

inline QString relativePath(int directory, int file) {
  return QStringLiteral("dir%1/File %2.txt").arg(directory, 3, 10, QLatin1Char('0')).arg(file);
}

inline QString dataDirectory() {
  const QByteArray fromEnvironment = qgetenv("JELV_BENCH_DATA");
  if (!fromEnvironment.isEmpty()) return QString::fromLocal8Bit(fromEnvironment);
  const QString besideBuild = QCoreApplication::applicationDirPath() + QStringLiteral("/../../bench/data");
  if (QFileInfo(besideBuild).isDir()) return QDir::cleanPath(besideBuild);
  return QDir::tempPath() + QStringLiteral("/jelv-bench-data");
}

inline bool run(const QString& directory, const QStringList& args, const QByteArray& input = {}) {
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

inline bool generate(const QString& repo) {
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


// The repository's path, generated first when it isn't there yet; empty on failure.
inline QString ensure() {
  const QString repo = dataDirectory() + QStringLiteral("/status-100k");
  if (QFileInfo::exists(repo + QStringLiteral("/.git/jelv-bench-generated"))) return repo;
  std::fprintf(stderr, "Generating 100,000 changed files in %s ...\n", qPrintable(repo));
  return generate(repo) ? repo : QString();
}

}  // namespace ChangedFilesRepository
