#include <gtest/gtest.h>

#include "Git/Merge/MergeConflictParser.h"
#include "Git/Merge/SideBySideMergeController.h"
#include "support/LogCapture.h"

namespace {

// alpha / a conflict (local "bravo local", remote "bravo remote" and "bravo 2") / charlie
// delta echo, as git prints it for the unmerged path.
const char* combinedDiff =
    "diff --cc f\n"
    "index 1,2..0\n"
    "--- a/f\n"
    "+++ b/f\n"
    "@@@ -1,5 -1,6 +1,10 @@@\n"
    "  alpha\n"
    "++<<<<<<< HEAD\n"
    " +bravo local\n"
    "++=======\n"
    "+ bravo remote\n"
    "+ bravo 2\n"
    "++>>>>>>> theirs\n"
    "  charlie\n"
    "  delta\n"
    "  echo\n";

struct Editor {
  Editor() : controller(MergeConflictParser().parse("f", QString::fromUtf8(combinedDiff))) {}
  QString pane() const { return controller.view(MergeConflictPart::merged).text(); }
  qsizetype at(const char* text, qsizetype shift = 0) const { return pane().indexOf(QString::fromUtf8(text)) + shift; }
  void chooseLocal() {
    controller.chooseSide(controller.mergeConflict()->chunks[1], MergeConflictPart::local);
  }
  std::optional<qsizetype> edit(qsizetype start, qsizetype end, const char* text) {
    return controller.performUpdate({start, end}, QString::fromUtf8(text), QString::fromUtf8(text).contains(u'\n'));
  }
  QString result() const { return controller.mergeConflict()->resultText(); }
  SideBySideMergeController controller;
};

}  // namespace

// Each row starts from the conflict resolved to the local side, then applies one edit
// of the result pane; the result text and the cursor afterwards are checked.
TEST(MergeResultText, EditsGoThroughTheModel) {
  const struct {
    const char* name;
    std::function<std::optional<qsizetype>(Editor&)> edit;
    QString result;
    qsizetype cursor;  // in the pane's text, which has padding rows
  } cases[] = {
      {"type a character", [](Editor& e) { return e.edit(e.at("charlie", 2), e.at("charlie", 2), "X"); },
       "alpha\nbravo local\nchXarlie\ndelta\necho\n", 22},
      {"return in the middle of a line", [](Editor& e) { return e.edit(e.at("bravo", 5), e.at("bravo", 5), "\n"); },
       "alpha\nbravo\n local\ncharlie\ndelta\necho\n", 12},
      {"delete the newline at a line's end", [](Editor& e) { return e.edit(e.at("delta", 5), e.at("delta", 6), ""); },
       "alpha\nbravo local\ncharlie\ndeltaecho\n", 32},
      {"delete across three lines", [](Editor& e) { return e.edit(e.at("bravo", 3), e.at("delta", 2), ""); },
       "alpha\nbralta\necho\n", 9},
      {"paste two lines over a selection", [](Editor& e) { return e.edit(e.at("local"), e.at("local", 5), "one\ntwo"); },
       "alpha\nbravo one\ntwo\ncharlie\ndelta\necho\n", 19},
      {"paste at the very start", [](Editor& e) { return e.edit(0, 0, "zero\n"); },
       "zero\nalpha\nbravo local\ncharlie\ndelta\necho\n", 5},
      {"replace a whole line", [](Editor& e) { return e.edit(e.at("charlie"), e.at("charlie", 8), "C\n"); },
       "alpha\nbravo local\nC\ndelta\necho\n", 21},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Editor editor;
    editor.chooseLocal();
    const auto cursor = c.edit(editor);
    ASSERT_TRUE(cursor);
    EXPECT_EQ(editor.result(), c.result);
    EXPECT_EQ(*cursor, c.cursor);
    // The pane shows the model: the same rows besides the padding.
    EXPECT_EQ(editor.pane().split(u'\n', Qt::SkipEmptyParts), editor.result().split(u'\n', Qt::SkipEmptyParts));
    EXPECT_EQ(editor.controller.mergeConflict()->unresolvedConflictCount(), 0);
  }
}

TEST(MergeResultText, RefusedEditsChangeNothing) {
  Editor editor;
  LogCapture log;
  const QString before = editor.pane();
  // The marker of the open conflict and the padding row below it.
  EXPECT_FALSE(editor.edit(editor.at("--- Merge"), editor.at("--- Merge"), "x"));
  EXPECT_FALSE(editor.edit(editor.at("--- Merge", 23), editor.at("--- Merge", 23), "x"));
  EXPECT_TRUE(log.contains("skip service line edit"));
  EXPECT_FALSE(editor.controller.performUpdate({0, 0}, std::nullopt, false));
  EXPECT_TRUE(log.contains("mergeTextView: replacementString is nil"));
  // An edit asked for while the panes are generated again.
  std::optional<qsizetype> nested = 1;
  editor.controller.onRegenerated = [&](bool) { nested = editor.edit(0, 0, "nested"); };
  ASSERT_TRUE(editor.edit(0, 0, "a"));
  EXPECT_FALSE(nested);
  EXPECT_TRUE(log.contains("mergeTextView: request to update text, while update in progress"));
  EXPECT_EQ(editor.pane(), "a" + before);
}

TEST(MergeResultText, ClicksOnTheSides) {
  Editor editor;
  const auto chunk = std::static_pointer_cast<MergeConflict::ConflictChunk>(editor.controller.mergeConflict()->chunks[1]);
  editor.controller.addLine(chunk->remoteLines[1]);
  editor.controller.addLine(chunk->localLines[0]);
  EXPECT_EQ(editor.result(), "alpha\nbravo 2\nbravo local\ncharlie\ndelta\necho\n");
  EXPECT_EQ(editor.controller.mergeConflict()->title(), "All conflicts resolved");
  editor.controller.removeLine(chunk->remoteLines[1]);
  editor.controller.addChunk(chunk, MergeConflictPart::remote);
  EXPECT_EQ(editor.result(), "alpha\nbravo local\nbravo remote\nbravo 2\ncharlie\ndelta\necho\n");
  // Three result rows: the sides' panes get padding to match.
  EXPECT_EQ(editor.controller.view(MergeConflictPart::local).text(), "alpha\nbravo local\n\n\ncharlie\ndelta\necho\n");
  editor.controller.removeChunk(chunk, MergeConflictPart::local);
  editor.controller.removeChunk(chunk, MergeConflictPart::remote);
  EXPECT_EQ(editor.controller.mergeConflict()->title(), "Resolved 0 conflicts of 1");
}
