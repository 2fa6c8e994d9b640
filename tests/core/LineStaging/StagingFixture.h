#pragma once
// Line staging against real repositories: show a diff the way the application asks git
// for it, select rows of the unified view, build the selection patch and hand it to
// git apply; then look at the index and the working tree byte for byte.
#include <QFile>
#include <gtest/gtest.h>

#include "Git/Commands/WorkingDirectory/ApplySelectionPatchGitCommand.h"
#include "Models/PatchParser.h"
#include "Models/PatchViewBuilder.h"
#include "Models/SelectionPatch.h"
#include "Models/UnifiedDiffExporter.h"
#include "core/Patch/DiffFixture.h"

class LineStagingTest : public ::testing::Test {
 protected:
  // A new repository for each row of a table test.
  void freshRepository() { repository_ = std::make_unique<TempRepository>(); }
  TempRepository& repo() { return *repository_; }
  const TempRepository& repo() const { return *repository_; }

  XPatchPtr patch;
  PatchView::Document view;

  // The working tree against the index, as the unstaged list shows it.
  void showUnstaged(const QStringList& extra = {}) { show(DiffFixture::diff(repo(), extra), XFilePatch::Location::unstaged); }
  void showStaged(const QStringList& extra = {}) { show(DiffFixture::stagedDiff(repo(), extra), XFilePatch::Location::staged); }
  void showUntracked(const QString& path) { show(DiffFixture::untrackedDiff(repo(), path), XFilePatch::Location::unstaged); }

  void show(const QString& diff, XFilePatch::Location location) {
    patch = PatchParser().parse(diff, location);
    ASSERT_TRUE(patch) << diff.toStdString();
    ASSERT_FALSE(patch->files.empty()) << diff.toStdString();
    view = PatchViewBuilder::unified(patch);
  }

  // The row of a changed line: "+text" an added one, "-text" a removed one, " text"
  // context; the first match in the view.
  PatchView::Range row(const QString& spec) const {
    const QChar kind = spec.front();
    const QString text = spec.mid(1);
    for (const auto& file : view.files) {
      for (const auto& chunk : file.chunks) {
        for (const auto& sub : chunk.subChunks) {
          const auto lists = kind == u'+'   ? std::vector{&sub.addedLines}
                              : kind == u'-' ? std::vector{&sub.removedLines}
                                             : std::vector{&sub.preContextLines, &sub.postContextLines};
          for (const auto* list : lists) {
            for (const auto& line : *list) {
              if (line.node && rowText(line.node->line) == text) return line.range;
            }
          }
        }
      }
    }
    ADD_FAILURE() << "no row " << spec.toStdString() << " in\n" << view.text.toStdString();
    return {};
  }

  // From the start of the first row to the end of the last, as a drag would select.
  std::pair<qsizetype, qsizetype> span(const QString& first, const QString& last) const {
    return {row(first).location, row(last).end()};
  }

  XPatchPtr selection(SelectionMode mode, std::pair<qsizetype, qsizetype> range) const {
    return SelectionPatch::make(range.first, range.second, mode, view.files);
  }

  // Selects, applies and reports git's answer; fails the test if git refuses.
  void apply(SelectionMode mode, std::pair<qsizetype, qsizetype> range) {
    const XPatchPtr selected = selection(mode, range);
    ASSERT_TRUE(selected);
    const auto result = ApplySelectionPatchGitCommand::execute(repo().module(), *selected, mode);
    ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString() << "\n"
                                    << UnifiedDiffExporter(selected->files.front()).text().toStdString();
  }
  void apply(SelectionMode mode, const QString& spec) { apply(mode, span(spec, spec)); }

  QByteArray indexed(const QString& path) const { return repo().gitBytes({"show", QLatin1Char(':') + path}); }
  // "100644 path" per entry of the index.
  QStringList indexEntries() const {
    QStringList entries;
    const QString listing = repo().git({"ls-files", "-s"});
    for (const QString& line : listing.split(u'\n', Qt::SkipEmptyParts)) {
      entries << line.section(u' ', 0, 0) + u' ' + line.section(u'\t', 1);
    }
    return entries;
  }
  QByteArray worktree(const QString& path) const { return repo().readFile(path); }
  bool exists(const QString& path) const { return QFile::exists(repo().path() + u'/' + path); }

 private:
  std::unique_ptr<TempRepository> repository_ = std::make_unique<TempRepository>();

  static QString rowText(QString line) {
    if (line.endsWith(u'\n')) line.chop(1);
    if (line.endsWith(u'\r')) line.chop(1);
    return line;
  }
};

inline QByteArray lines(std::initializer_list<const char*> items) {
  QByteArray text;
  for (const char* item : items) text += QByteArray(item) + '\n';
  return text;
}

// "l1\n" to "l<count>\n".
inline QByteArray numbered(int count) {
  QByteArray text;
  for (int i = 1; i <= count; ++i) text += "l" + QByteArray::number(i) + '\n';
  return text;
}
