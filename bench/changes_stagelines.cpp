// changes.stagelines: staging a selection of lines in a file whose diff is one hunk of
// 10,000 lines, end to end as the local changes page does it: the selection patch from
// the view tree, git apply on standard input, the status of the changed path merged
// into the file list, the diff read again and its view tree rebuilt. The reference is
// git apply --cached of the same patch, run alone. The index is reset between runs and
// that is not timed. The repository is made in a temporary folder.
#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <cstring>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetPathsStatusGitCommand.h"
#include "Git/Commands/WorkingDirectory/ApplySelectionPatchGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Models/FileContent/DiffSettings.h"
#include "Models/FileContent/TextDiffFileContent.h"
#include "Models/FileContent/TextDisplayDecision.h"
#include "Models/PatchViewBuilder.h"
#include "Models/SelectionPatch.h"
#include "Models/StagingRefresh.h"
#include "Models/UnifiedDiffExporter.h"
#include "support/BenchSupport.h"

namespace {

using Bench::git;
using Bench::writeFile;

// The view tree of the file's working-tree diff, as the page builds it.
std::optional<PatchView::Document> readView(const GitModule& module, const ChangedFilePtr& file) {
  const auto content = GetWorkingDirectoryFileChangesGitCommand::execute(module, file, false, DiffSettings::fromPreferences());
  if (!content || content.value()->kind() != DiffFileContent::Kind::text) return std::nullopt;
  const auto& text = static_cast<const TextDiffFileContent&>(*content.value());
  const TextDisplayDecision decision = TextDisplayDecision::forDiff(text.diffString, file->path, XFilePatch::Location::unstaged, false);
  if (!decision.patch || decision.patch->files.empty()) return std::nullopt;
  return PatchViewBuilder::unified(decision.patch);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "changes.stagelines") != 0) {
    std::fprintf(stderr, "usage: %s changes.stagelines [REPOSITORY]\n", argv[0]);
    return 2;
  }
  const char* name = argv[1];
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();

  QTemporaryDir dir;
  const QString repo = dir.path();
  Bench::makeRepositoryWithReplacedFile(repo);
  const GitModule module = Bench::moduleAt(repo);

  const auto status = GetChangedFilesGitCommand::execute(module, {}, false, false);
  if (!status || status.value().changedFiles.size() != 1) return 1;
  const ChangedFileList files = status.value().changedFiles;
  const std::optional<PatchView::Document> view = readView(module, files.front());
  if (!view || view->files.empty() || view->files[0].chunks.size() != 1) return 1;
  const PatchView::SubChunk& sub = view->files[0].chunks[0].subChunks[0];
  if (sub.removedLines.size() + sub.addedLines.size() != 10000) return 1;
  // A drag over the last hundred removed lines and the first hundred added ones.
  const qsizetype start = sub.removedLines[4900].range.location;
  const qsizetype addedEnd = sub.addedLines[99].range.end();

  const XPatchPtr reference = SelectionPatch::make(start, addedEnd, SelectionMode::stage, view->files);
  if (!reference) return 1;
  const QString patchFile = dir.filePath(QStringLiteral("selection.patch"));
  writeFile(patchFile, UnifiedDiffExporter(reference->files[0]).data().value_or(QByteArray()));

  const auto resetIndex = [&] { git(repo, {QStringLiteral("reset"), QStringLiteral("-q")}); };
  std::vector<double> ours, refs;
  size_t rebuiltRows = 0;
  bool failed = false;
  for (int run = 0; run < 10; ++run) {
    resetIndex();
    const double time = Bench::seconds([&] {
      const XPatchPtr selected = SelectionPatch::make(start, addedEnd, SelectionMode::stage, view->files);
      if (!selected || !ApplySelectionPatchGitCommand::execute(module, *selected, SelectionMode::stage)) {
        failed = true;
        return;
      }
      const QStringList paths = StagingRefresh::pathsToRead(files, SelectionPatch::changedPaths(*selected));
      const auto fresh = GetPathsStatusGitCommand::execute(module, paths, {}, false, false);
      if (!fresh) {
        failed = true;
        return;
      }
      const ChangedFileList merged = StagingRefresh::merged(files, paths, fresh.value());
      ChangedFilePtr unstaged;
      for (const ChangedFilePtr& file : merged) {
        if (!file->staged) unstaged = file;
      }
      const auto rebuilt = unstaged ? readView(module, unstaged) : std::nullopt;
      if (!rebuilt) {
        failed = true;
        return;
      }
      rebuiltRows = static_cast<size_t>(rebuilt->text.count(QLatin1Char('\n')));
    });
    resetIndex();
    const double referenceTime =
        Bench::seconds([&] { Bench::runGitToDevNull(repo, {QStringLiteral("apply"), QStringLiteral("--cached"), patchFile}); });
    if (run == 0) continue;  // warm-up
    ours.push_back(time);
    refs.push_back(referenceTime);
  }
  if (failed) {
    std::fprintf(stderr, "%s: staging failed\n", name);
    return 1;
  }
  // The reference must really have staged the same lines.
  const QByteArray staged = git(repo, {QStringLiteral("diff"), QStringLiteral("--cached"), QStringLiteral("--numstat")});
  if (!staged.startsWith("100\t100\t")) {
    std::fprintf(stderr, "%s: unexpected staged change %s\n", name, staged.constData());
    return 1;
  }
  std::sort(ours.begin(), ours.end());
  std::sort(refs.begin(), refs.end());
  std::fprintf(stderr, "%s: 200 of 10,000 changed lines staged; the rebuilt view has %zu rows\n", name, rebuiltRows);
  Bench::report(name, ours[ours.size() / 2] * 1000, "ms", refs[refs.size() / 2] * 1000, "ms");
  return 0;
}
