// references.load: GetReferencesGitCommand on 5,000 references against
// "git for-each-ref" with the same arguments alone. The references are made in a
// temporary clone of the given repository: branches, remote branches, lightweight and
// annotated tags, spread over the history's commits, then packed as "git gc" would.
#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "support/BenchSupport.h"
#include "support/InterleavedTiming.h"

namespace {

constexpr int kReferenceCount = 5000;

bool runGit(const std::optional<QString>& directory, const QStringList& args, const QByteArray& input = {},
            QByteArray* output = nullptr) {
  GitDataResponse response = GitRequest(directory, args).executeData(input.isEmpty() ? std::nullopt : std::optional(input));
  if (!response.isSuccess()) {
    std::fprintf(stderr, "git %s failed: %s\n", qPrintable(args.join(' ')), qPrintable(response.failure->error));
    return false;
  }
  if (output) *output = response.data;
  return true;
}

// A clone with kReferenceCount references in four namespaces.
bool makeReferences(const QString& source, const QString& clone) {
  if (!runGit(std::nullopt, {"clone", "--quiet", "--no-checkout", source, clone})) return false;
  QByteArray revList;
  if (!runGit(clone, {"rev-list", "--all", "--max-count=" + QString::number(kReferenceCount)}, {}, &revList)) return false;
  const QList<QByteArray> commits = revList.trimmed().split('\n');
  if (commits.isEmpty() || commits.first().isEmpty()) return false;
  QByteArray updates;
  const int annotated = kReferenceCount / 10;
  for (int i = 0; i < kReferenceCount - annotated; ++i) {
    const QByteArray& commit = commits.at(i % commits.size());
    const QByteArray n = QByteArray::number(i);
    switch (i % 3) {
      case 0: updates += "create refs/heads/bench/branch-" + n + ' ' + commit + '\n'; break;
      case 1: updates += "create refs/remotes/origin/bench/branch-" + n + ' ' + commit + '\n'; break;
      default: updates += "create refs/tags/bench-light-" + n + ' ' + commit + '\n'; break;
    }
  }
  if (!runGit(clone, {"update-ref", "--stdin"}, updates)) return false;
  for (int i = 0; i < annotated; ++i) {
    const QString name = "bench-annotated-" + QString::number(i);
    if (!runGit(clone, {"tag", "-a", "-m", name, name, QString::fromLatin1(commits.at((i * 7) % commits.size()))})) return false;
  }
  return runGit(clone, {"pack-refs", "--all"});
}

}  // namespace

int main(int argc, char** argv) {
  if (!Bench::hasArguments(argc, argv)) return 2;
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  QTemporaryDir workspace;
  const QString clone = workspace.path() + QStringLiteral("/clone");
  if (!makeReferences(QFileInfo(QString::fromLocal8Bit(argv[2])).absoluteFilePath(), clone)) return 1;
  const GitModule module{clone, clone + QStringLiteral("/.git"), std::nullopt};

  size_t count = 0;
  const auto [ours, ref] = Bench::interleavedMedianSeconds(
      [&] {
        auto result = GetReferencesGitCommand::execute(module, Subdomain::all());
        count = result.isSuccess() ? result.value().size() : 0;
      },
      [&] { Bench::runGitToDevNull(clone, GetReferencesGitCommand::arguments(Subdomain::all())); }, 15);
  Bench::report(argv[1], ours * 1000, "ms", ref * 1000, "ms");
  std::fprintf(stderr, "references.load: %zu references\n", count);
  return count >= kReferenceCount ? 0 : 1;
}
