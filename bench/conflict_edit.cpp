// conflict.edit: a 10,000-line file with 500 conflicts, left by a real merge, read as
// the merge editor reads it (the whole-file combined diff, parsed into the model) and
// laid out in its three panes. The reference is `git merge-file` producing the same
// conflicted file from the three versions. Then one character typed into the result
// pane: the model's update and the three panes generated again must fit in one frame
// (16 ms); that time is printed as conflict.edit.type.
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <cstring>

#include "Git/Merge/LoadMergeConflict.h"
#include "Git/Merge/SideBySideMergeController.h"
#include "support/BenchSupport.h"

namespace {

using Bench::git;
using Bench::writeFile;

QByteArray version(const char* side) {
  QByteArray text;
  for (int i = 0; i < 10000; ++i) {
    // Every twentieth line differs on both sides: 500 conflicts with context between.
    if (side && i % 20 == 10) text += QByteArray(side) + " line " + QByteArray::number(i) + " changed on this side\n";
    else text += "line " + QByteArray::number(i) + " of the file, as both sides have it\n";
  }
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "conflict.edit") != 0) {
    std::fprintf(stderr, "usage: %s conflict.edit [REPOSITORY]\n", argv[0]);
    return 2;
  }
  const char* name = argv[1];
  QCoreApplication app(argc, argv);
  Bench::setUpEnvironment();

  QTemporaryDir dir;
  const QString repo = dir.filePath(QStringLiteral("repo"));
  QDir().mkpath(repo);
  git(repo, {QStringLiteral("init"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("main")});
  const QString file = repo + QStringLiteral("/big.txt");
  writeFile(file, version(nullptr));
  Bench::commitAll(repo, QStringLiteral("base"));
  git(repo, {QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("topic")});
  writeFile(file, version("remote"));
  Bench::commitAll(repo, QStringLiteral("remote"));
  git(repo, {QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  writeFile(file, version("local"));
  Bench::commitAll(repo, QStringLiteral("local"));
  git(repo, {QStringLiteral("merge"), QStringLiteral("-q"), QStringLiteral("topic")});
  const GitModule module = Bench::moduleAt(repo);

  // The reference's inputs: the three versions as files.
  const QString base = dir.filePath(QStringLiteral("base")), local = dir.filePath(QStringLiteral("local")),
                remote = dir.filePath(QStringLiteral("remote"));
  writeFile(base, version(nullptr));
  writeFile(local, version("local"));
  writeFile(remote, version("remote"));

  std::shared_ptr<MergeConflict> conflict;
  std::unique_ptr<SideBySideMergeController> controller;
  bool failed = false;
  const double ours = Bench::medianSeconds([&] {
    auto loaded = LoadMergeConflict::execute(module, QStringLiteral("big.txt"));
    if (!loaded) {
      failed = true;
      return;
    }
    conflict = loaded.value();
    controller = std::make_unique<SideBySideMergeController>(conflict);
  });
  const double reference = Bench::medianSeconds([&] {
    Bench::runGitToDevNull(dir.path(), {QStringLiteral("merge-file"), QStringLiteral("-p"), local, base, remote});
  });
  if (failed || !controller || conflict->conflictCount() != 500) {
    std::fprintf(stderr, "%s: the conflict was not read (%d conflicts)\n", name, conflict ? conflict->conflictCount() : -1);
    return 1;
  }
  const qsizetype rows = controller->view(MergeConflictPart::merged).text().count(u'\n');

  // Typing: the conflicts resolved to the local side first, then one character in the
  // middle of the file, each time at a fresh place.
  for (const auto& chunk : conflict->chunks) {
    if (chunk->kind() == MergeConflict::Chunk::Kind::conflict) static_cast<MergeConflict::ConflictChunk&>(*chunk).chooseLocal();
  }
  controller->regenerate(true);
  std::vector<double> typing;
  for (int run = 0; run < 21; ++run) {
    const QString& text = controller->view(MergeConflictPart::merged).text();
    const qsizetype at = text.indexOf(QStringLiteral("line %1 ").arg(5000 + run * 20)) + 4;
    const double time = Bench::seconds([&] {
      if (!controller->performUpdate({at, at}, QStringLiteral("x"), false)) failed = true;
    });
    typing.push_back(time);
  }
  if (failed || !controller->mergeConflict()->resultText().contains(QStringLiteral("linex 5000 "))) {
    std::fprintf(stderr, "%s: typing did not reach the model\n", name);
    return 1;
  }
  std::sort(typing.begin(), typing.end());
  const double typed = typing[typing.size() / 2] * 1000;
  std::fprintf(stderr, "%s: 500 conflicts, %lld rows per pane; one typed character %.2f ms (a frame is 16 ms)\n", name,
               static_cast<long long>(rows), typed);
  Bench::report(name, ours * 1000, "ms", reference * 1000, "ms");
  Bench::report("conflict.edit.type", typed, "ms");
  return typed < 16.0 ? 0 : 1;
}
