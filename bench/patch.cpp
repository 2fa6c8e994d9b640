// diff.parse: tokenizer and parser over a 20 MB diff, against the time git takes to
// print that diff. diff.selection: the selection patch and its export for one line of a
// 10,000-line hunk. Both make their own repository in a temporary folder (the history
// repository passed in is not used).
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <cstring>

#include "Git/Process/GitRequest.h"
#include "Git/Process/TextEncoding.h"
#include "Models/PatchParser.h"
#include "Models/PatchViewBuilder.h"
#include "Models/SelectionPatch.h"
#include "Models/UnifiedDiffExporter.h"
#include "support/BenchSupport.h"
#include "support/InterleavedTiming.h"

namespace {

using Bench::git;
using Bench::commitAll;
using Bench::writeFile;

QStringList diffArguments(const QString& from, const QString& to) {
  return {QStringLiteral("--no-pager"), QStringLiteral("diff"), QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"),
          QStringLiteral("--src-prefix=a/"), QStringLiteral("--dst-prefix=b/"), QStringLiteral("--submodule=short"),
          from, to, QStringLiteral("--unified=3")};
}

// 154 files of 2,000 lines; every fourth line changes, so the hunks join and the diff
// holds every line once and the changed ones twice: about 20 MB.
int parseFigure(const char* name) {
  QTemporaryDir dir;
  const QString repo = dir.path();
  git(repo, {QStringLiteral("init"), QStringLiteral("-q")});
  const auto fileContent = [](int file, bool changed) {
    QByteArray text;
    for (int line = 0; line < 2000; ++line) {
      const bool edit = changed && line % 4 == 1;
      text += (edit ? "  changed value of line " : "    let value_of_line = ") + QByteArray::number(file * 10000 + line) +
              (edit ? "; // edited\n" : " + offset; // original\n");
    }
    return text;
  };
  QDir(repo).mkpath(QStringLiteral("src"));
  for (int file = 0; file < 154; ++file) writeFile(repo + QStringLiteral("/src/file%1.rs").arg(file), fileContent(file, false));
  commitAll(repo, QStringLiteral("one"));
  for (int file = 0; file < 154; ++file) writeFile(repo + QStringLiteral("/src/file%1.rs").arg(file), fileContent(file, true));
  commitAll(repo, QStringLiteral("two"));

  const QStringList args = diffArguments(QStringLiteral("HEAD~1"), QStringLiteral("HEAD"));
  const QByteArray bytes = git(repo, args);
  const QString text = decodeString(bytes).value_or(QString());
  XPatchPtr patch;
  const auto [ours, reference] = Bench::interleavedMedianSeconds(
      [&] { patch = PatchParser().parse(text, XFilePatch::Location::revision); }, [&] { Bench::runGitToDevNull(repo, args); }, 7);
  const double decode = Bench::medianSeconds([&] { (void)decodeString(bytes); });
  Bench::report(name, ours * 1000, "ms", reference * 1000, "ms");
  std::fprintf(stderr, "%s: %.1f MB, %zu files, %lld changed lines; decoding the bytes %.1f ms more\n", name,
               bytes.size() / 1e6, patch ? patch->files.size() : 0, patch ? (long long)patch->changedLinesCount() : 0LL,
               decode * 1000);
  return patch && patch->files.size() == 154 ? 0 : 1;
}

// A file of 5,000 lines, every one replaced: one hunk of 10,000 lines. One added line
// in its middle is selected; each mode is timed and the slowest is reported.
int selectionFigure(const char* name) {
  QTemporaryDir dir;
  const QString repo = dir.path();
  Bench::makeRepositoryWithReplacedFile(repo);
  const QString text = decodeString(git(repo, {QStringLiteral("-c"), QStringLiteral("core.quotepath=false"), QStringLiteral("--no-pager"),
                                               QStringLiteral("diff"), QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"),
                                               QStringLiteral("--src-prefix=a/"), QStringLiteral("--dst-prefix=b/"),
                                               QStringLiteral("--full-index")}))
                           .value_or(QString());
  const XPatchPtr patch = PatchParser().parse(text, XFilePatch::Location::unstaged);
  if (!patch || patch->files.size() != 1) return 1;
  PatchView::Document view;
  const double layout = Bench::medianSeconds([&] { view = PatchViewBuilder::unified(patch); });
  const PatchView::ChangedLine& target = view.files[0].chunks[0].subChunks[0].addedLines[2500];

  double slowest = 0;
  qsizetype bytes = 0;
  for (SelectionMode mode : {SelectionMode::stage, SelectionMode::unstage, SelectionMode::discard}) {
    const double time = Bench::medianSeconds(
        [&] {
          const XPatchPtr selected = SelectionPatch::make(target.range.location, target.range.end(), mode, view.files);
          bytes = selected ? UnifiedDiffExporter(selected->files[0]).data().value_or(QByteArray()).size() : 0;
        },
        9);
    std::fprintf(stderr, "%s: mode %d %.2f ms, patch %lld bytes\n", name, int(mode), time * 1000, (long long)bytes);
    slowest = std::max(slowest, time);
  }
  Bench::report(name, slowest * 1000, "ms");
  std::fprintf(stderr, "%s: hunk of %zu lines; laying out the view (not counted) %.1f ms\n", name,
               patch->files[0].chunks[0]->subChunks[0]->removedLines.size() * 2, layout * 1000);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s diff.parse|diff.selection [REPOSITORY]\n", argv[0]);
    return 2;
  }
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();
  if (std::strcmp(argv[1], "diff.parse") == 0) return parseFigure(argv[1]);
  if (std::strcmp(argv[1], "diff.selection") == 0) return selectionFigure(argv[1]);
  std::fprintf(stderr, "unknown figure %s\n", argv[1]);
  return 2;
}
