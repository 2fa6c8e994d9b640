#include <gtest/gtest.h>

#include "DiffFixture.h"
#include "Models/PatchParser.h"
#include "Models/PatchViewBuilder.h"
#include "Models/SelectionPatch.h"
#include "Models/UnifiedDiffExporter.h"

namespace {

const QString sample = QStringLiteral(
    "diff --git a/src/a.c b/src/a.c\n"
    "index 1111111..2222222 100644\n"
    "--- a/src/a.c\n"
    "+++ b/src/a.c\n"
    "@@ -4,5 +4,5 @@ int main()\n"
    " keep 4\r\n"
    "-old 5\r\n"
    "+new 5\r\n"
    "+new 6\r\n"
    " keep 6\r\n"
    "-old 7\r\n"
    " keep 8\r\n"
    "diff --git a/b.txt b/c.txt\n"
    "similarity index 90%\n"
    "rename from b.txt\n"
    "rename to c.txt\n"
    "index 3333333..4444444 100644\n"
    "--- a/b.txt\n"
    "+++ b/c.txt\n"
    "@@ -1 +1 @@\n"
    "-x\n"
    "\\ No newline at end of file\n"
    "+y\n"
    "\\ No newline at end of file\n");

QString textOf(const PatchView::Document& document, const PatchView::Range& range) {
  return document.text.mid(range.location, range.length);
}

}  // namespace

TEST(PatchView, UnifiedLayoutPlacesEveryRowInTheText) {
  const XPatchPtr patch = PatchParser().parse(sample, XFilePatch::Location::unstaged);
  ASSERT_TRUE(patch);
  const PatchView::Document view = PatchViewBuilder::unified(patch);
  EXPECT_EQ(view.text, QStringLiteral(
                           "src/a.c\n"
                           "@@ -4,5 +4,5 @@ int main()\n"
                           "keep 4\n"
                           "old 5\n"
                           "new 5\n"
                           "new 6\n"
                           "keep 6\n"
                           "old 7\n"
                           "keep 8\n"
                           "b.txt \u2192 c.txt\n"
                           "@@ -1,1 +1,1 @@\n"
                           "x\n"
                           "\\ No newline at end of file\n"
                           "y\n"
                           "\\ No newline at end of file\n"));
  ASSERT_EQ(view.files.size(), 2u);
  const PatchView::FilePatch& first = view.files[0];
  EXPECT_EQ(textOf(view, first.headerRange), "src/a.c\n");
  EXPECT_EQ(first.range.end(), view.files[1].range.location);
  ASSERT_EQ(first.chunks.size(), 1u);
  const PatchView::Chunk& chunk = first.chunks[0];
  EXPECT_EQ(textOf(view, chunk.header), "@@ -4,5 +4,5 @@ int main()\n");
  EXPECT_EQ(chunk.innerRange.location, chunk.header.end());
  EXPECT_EQ(chunk.range.end(), first.range.end());
  ASSERT_EQ(chunk.subChunks.size(), 2u);
  const PatchView::SubChunk& change = chunk.subChunks[0];
  EXPECT_EQ(change.schema, PatchView::Schema::modification);
  EXPECT_EQ(chunk.subChunks[1].schema, PatchView::Schema::removal);
  ASSERT_EQ(change.addedLines.size(), 2u);
  EXPECT_EQ(textOf(view, change.addedLines[1].range), "new 6\n");
  EXPECT_EQ(change.addedLines[1].line, 5);
  EXPECT_EQ(change.addedLines[1].newLineNumber, 6);
  EXPECT_FALSE(change.addedLines[1].oldLineNumber.has_value());
  EXPECT_EQ(change.postContextLines.at(0).oldLineNumber, 6);
  EXPECT_EQ(change.postContextLines.at(0).newLineNumber, 7);
  EXPECT_EQ(chunk.subChunks[1].removedLines.at(0).oldLineNumber, 7);

  const PatchView::SubChunk& flagged = view.files[1].chunks.at(0).subChunks.at(0);
  EXPECT_TRUE(flagged.removedLines.at(0).noNewLineAtEndOfFile);
  ASSERT_TRUE(flagged.noNewLineAtEndOfFileLine.has_value());
  EXPECT_EQ(textOf(view, flagged.noNewLineAtEndOfFileLine->range), "\\ No newline at end of file\n");
  EXPECT_EQ(flagged.noNewLineAtEndOfFileLine->line, 14);

  // The stage bar's hunk under the mouse: header and lines count, the file title not.
  EXPECT_EQ(PatchView::chunkAt(view.files, change.addedLines[0].range.location + 2), &chunk);
  EXPECT_EQ(PatchView::chunkAt(view.files, chunk.header.location), &chunk);
  EXPECT_EQ(PatchView::chunkAt(view.files, 0), nullptr);
  EXPECT_EQ(PatchView::chunkAt(view.files, view.text.size()), nullptr);
}

TEST(PatchView, SideBySideSelectionsGiveTheSamePatchesAsUnifiedOnes) {
  TempRepository repo;
  QByteArray before;
  for (int i = 1; i <= 30; ++i) before += "line " + QByteArray::number(i) + '\n';
  repo.commitFile("f", before + "end", "base");
  QByteArray after = before;
  after.replace("line 3\n", "three\nthree and a half\nthree and more\n");
  after.replace("line 10\nline 11\nline 12\n", "ten\n");
  after.replace("line 20\n", "");
  repo.writeFile("f", after + "END");
  const XPatchPtr patch = PatchParser().parse(DiffFixture::diff(repo), XFilePatch::Location::unstaged);
  ASSERT_TRUE(patch);

  const PatchView::Document unified = PatchViewBuilder::unified(patch);
  const PatchViewBuilder::SideBySide sides = PatchViewBuilder::sideBySide(patch);
  EXPECT_EQ(sides.left.text.count(u'\n'), sides.right.text.count(u'\n'));

  int compared = 0;
  for (size_t c = 0; c < unified.files[0].chunks.size(); ++c) {
    for (size_t s = 0; s < unified.files[0].chunks[c].subChunks.size(); ++s) {
      const PatchView::SubChunk& one = unified.files[0].chunks[c].subChunks[s];
      const PatchView::SubChunk& left = sides.left.files[0].chunks[c].subChunks[s];
      const PatchView::SubChunk& right = sides.right.files[0].chunks[c].subChunks[s];
      // Padding makes both sides of a change equally tall.
      EXPECT_EQ(left.removedLines.size() + left.alignmentLines.size(), right.addedLines.size() + right.alignmentLines.size());
      for (const auto& line : left.addedLines) EXPECT_TRUE(line.range.isEmpty());
      for (const auto& line : right.removedLines) EXPECT_TRUE(line.range.isEmpty());
      for (const auto& line : left.alignmentLines) EXPECT_FALSE(line.node);

      const auto samePatch = [&](const PatchView::Range& inUnified, const PatchView::Document& side, const PatchView::Range& inSide) {
        for (SelectionMode mode : {SelectionMode::stage, SelectionMode::unstage, SelectionMode::discard}) {
          const XPatchPtr a = SelectionPatch::make(inUnified.location, inUnified.end(), mode, unified.files);
          const XPatchPtr b = SelectionPatch::make(inSide.location, inSide.end(), mode, side.files);
          ASSERT_TRUE(a && b);
          EXPECT_EQ(UnifiedDiffExporter(a->files[0]).text(), UnifiedDiffExporter(b->files[0]).text());
          EXPECT_GE(a->changedLinesCount(), 1);
          ++compared;
        }
      };
      for (size_t i = 0; i < one.removedLines.size(); ++i) samePatch(one.removedLines[i].range, sides.left, left.removedLines[i].range);
      for (size_t i = 0; i < one.addedLines.size(); ++i) samePatch(one.addedLines[i].range, sides.right, right.addedLines[i].range);
    }
  }
  EXPECT_EQ(compared, 3 * patch->changedLinesCount());

  // The last lines have no newline; each side shows its marker next to its own line.
  const PatchView::SubChunk& last = sides.left.files[0].chunks.back().subChunks.back();
  ASSERT_TRUE(last.noNewLineAtEndOfFileLine.has_value());
  EXPECT_EQ(last.noNewLineAtEndOfFileLine->line, last.removedLines.back().line + 1);
  const PatchView::SubChunk& lastRight = sides.right.files[0].chunks.back().subChunks.back();
  EXPECT_EQ(lastRight.noNewLineAtEndOfFileLine->line, last.noNewLineAtEndOfFileLine->line);
}
