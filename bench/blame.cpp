// blame.large: blame of a 10,000-line file that 2,000 commits shaped, read and parsed,
// against git blame --porcelain alone.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <cstdio>

#include "Git/Commands/Revision/GetBlameGitCommand.h"
#include "support/BenchSupport.h"

namespace {

constexpr int kLines = 10000;
constexpr int kCommits = 2000;

// Each commit rewrites five lines spread over the file, so that the blame has to walk
// far back for most of them. Made once with fast-import and kept in the temporary folder.
QString makeRepository() {
  const QString repo = QDir::temp().filePath(QStringLiteral("jelv-bench-blame-%1-%2").arg(kLines).arg(kCommits));
  if (QFile::exists(repo + QStringLiteral("/.generated"))) return repo;
  QDir(repo).removeRecursively();
  QDir().mkpath(repo);
  Bench::git(repo, {QStringLiteral("init"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("main")});
  std::vector<int> version(kLines, 0);
  QProcess importer;
  importer.setWorkingDirectory(repo);
  importer.start(QStringLiteral("/usr/bin/git"), {QStringLiteral("fast-import"), QStringLiteral("--quiet")});
  importer.waitForStarted();
  for (int commit = 1; commit <= kCommits; ++commit) {
    if (commit > 1) {
      for (int k = 0; k < 5; ++k) version[static_cast<size_t>((commit * 7919 + k * 2003) % kLines)] = commit;
    }
    QByteArray content;
    content.reserve(kLines * 24);
    for (int line = 0; line < kLines; ++line) {
      content += "line " + QByteArray::number(line) + " v" + QByteArray::number(version[static_cast<size_t>(line)]) + '\n';
    }
    const QByteArray message = "change " + QByteArray::number(commit) + '\n';
    QByteArray record = "commit refs/heads/main\nmark :" + QByteArray::number(commit) + "\nauthor A" +
                        QByteArray::number(commit % 17) + " <a@x> " + QByteArray::number(1500000000 + commit * 60) +
                        " +0000\ncommitter C <c@x> " + QByteArray::number(1500000000 + commit * 60) + " +0000\ndata " +
                        QByteArray::number(message.size()) + '\n' + message;
    if (commit > 1) record += "from :" + QByteArray::number(commit - 1) + '\n';
    record += "M 100644 inline big.txt\ndata " + QByteArray::number(content.size()) + '\n' + content + '\n';
    importer.write(record);
    importer.waitForBytesWritten(-1);
  }
  importer.closeWriteChannel();
  importer.waitForFinished(-1);
  Bench::git(repo, {QStringLiteral("reset"), QStringLiteral("-q"), QStringLiteral("--hard"), QStringLiteral("main")});
  Bench::writeFile(repo + QStringLiteral("/.generated"), "");
  return repo;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s NAME [REPOSITORY]\n", argv[0]);
    return 2;
  }
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  const QString repo = makeRepository();
  const GitModule module = Bench::moduleAt(repo);
  size_t chunks = 0;
  const double ours = Bench::medianSeconds(
      [&] {
        const auto result = GetBlameGitCommand::execute(module, QStringLiteral("HEAD"), QStringLiteral("big.txt"));
        chunks = result ? result.value().size() : 0;
      },
      3);
  const double ref = Bench::medianSeconds(
      [&] { Bench::runGitToDevNull(repo, GetBlameGitCommand::arguments(QStringLiteral("HEAD"), QStringLiteral("big.txt"))); }, 3);
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "blame.large: %zu chunks\n", chunks);
  return chunks > 0 ? 0 : 1;
}
