#include <gtest/gtest.h>

#include "Git/Merge/MergeConflict.h"
#include "support/LogCapture.h"

namespace {

using Conflict = MergeConflict::ConflictChunk;
using Part = MergeConflictPart;

std::vector<MergeConflict::SelectableLinePtr> side(Part part, std::initializer_list<const char*> texts) {
  std::vector<MergeConflict::SelectableLinePtr> lines;
  for (const char* text : texts) lines.push_back(std::make_shared<MergeConflict::SelectableLine>(ContextType::add, QString::fromUtf8(text), part));
  return lines;
}

std::shared_ptr<Conflict> conflict(std::initializer_list<const char*> local = {"L1\n", "L2\n"},
                                   std::initializer_list<const char*> remote = {"R1\n"}) {
  auto chunk = std::make_shared<Conflict>(side(Part::remote, remote), side(Part::local, local), "theirs", "HEAD");
  chunk->adoptLines();
  return chunk;
}

QString result(const MergeConflict::Chunk& chunk) {
  QString text;
  for (const auto& line : chunk.resultLines) text += line->text();
  return text;
}

}  // namespace

// Each row: operations on a fresh conflict (local L1 L2, remote R1), then the result and
// the selection flags of L1, L2, R1.
TEST(MergeConflictModel, Operations) {
  using Op = std::function<void(Conflict&)>;
  const auto L = [](Conflict& c, int i) { return c.localLines[size_t(i)]; };
  const auto R = [](Conflict& c, int i) { return c.remoteLines[size_t(i)]; };
  const struct {
    const char* name;
    std::vector<Op> ops;
    QString result;
    std::array<bool, 3> selected;
  } cases[] = {
      {"select a line", {[&](Conflict& c) { L(c, 1)->select(); }}, "L2\n", {false, true, false}},
      {"select twice changes nothing",
       {[&](Conflict& c) { L(c, 1)->select(); }, [&](Conflict& c) { L(c, 1)->select(); }},
       "L2\n",
       {false, true, false}},
      {"selection order is result order",
       {[&](Conflict& c) { R(c, 0)->select(); }, [&](Conflict& c) { L(c, 0)->select(); }},
       "R1\nL1\n",
       {true, false, true}},
      {"choose local", {[](Conflict& c) { c.chooseLocal(); }}, "L1\nL2\n", {true, true, false}},
      {"choose remote after local",
       {[](Conflict& c) { c.chooseLocal(); }, [](Conflict& c) { c.chooseRemote(); }},
       "R1\n",
       {false, false, true}},
      {"choose keeps none of an edit",
       {[&](Conflict& c) { c.chooseLocal(); }, [&](Conflict& c) { L(c, 0)->insert(0, "x"); },
        [](Conflict& c) { c.chooseLocal(); }},
       "L1\nL2\n",
       {true, true, false}},
      {"clear", {[](Conflict& c) { c.chooseLocal(); }, [](Conflict& c) { c.clear(); }}, QString(), {false, false, false}},
      {"remove from parent unselects",
       {[](Conflict& c) { c.chooseLocal(); }, [&](Conflict& c) { L(c, 0)->removeFromParentChunk(); }},
       "L2\n",
       {false, true, false}},
      {"meld takes the next text and unselects it",
       {[](Conflict& c) { c.chooseLocal(); }, [&](Conflict& c) { L(c, 0)->removeSubrange(2, 3); },
        [&](Conflict& c) { L(c, 0)->meldWith(*L(c, 1)); }},
       "L1L2\n",
       {true, false, false}},
      {"a melded line can be selected again",
       {[](Conflict& c) { c.chooseLocal(); }, [&](Conflict& c) { L(c, 0)->meldWith(*L(c, 1)); },
        [&](Conflict& c) { L(c, 1)->select(); }},
       "L1\nL2\nL2\n",
       {true, true, false}},
      {"meld of an unselected line leaves it out",
       {[&](Conflict& c) { L(c, 0)->select(); }, [&](Conflict& c) { L(c, 0)->meldWith(*R(c, 0)); }},
       "L1\nR1\n",
       {true, false, false}},
      {"remove subrange to nothing leaves the result",
       {[](Conflict& c) { c.chooseLocal(); }, [&](Conflict& c) { L(c, 1)->removeSubrange(0, 3); }},
       "L1\n",
       {true, false, false}},
      {"invalid subrange does nothing",
       {[](Conflict& c) { c.chooseLocal(); }, [&](Conflict& c) { L(c, 1)->removeSubrange(1, 9); }},
       "L1\nL2\n",
       {true, true, false}},
      {"select side keeps the other",
       {[](Conflict& c) { c.chooseLocal(); }, [](Conflict& c) { c.selectSide(Part::remote); }},
       "L1\nL2\nR1\n",
       {true, true, true}},
      {"unselect side",
       {[](Conflict& c) { c.chooseLocal(); }, [](Conflict& c) { c.selectSide(Part::remote); },
        [](Conflict& c) { c.unselectSide(Part::local); }},
       "R1\n",
       {false, false, true}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    auto chunk = conflict();
    for (const auto& op : c.ops) op(*chunk);
    EXPECT_EQ(result(*chunk), c.result);
    EXPECT_EQ(chunk->localLines[0]->isSelected, c.selected[0]);
    EXPECT_EQ(chunk->localLines[1]->isSelected, c.selected[1]);
    EXPECT_EQ(chunk->remoteLines[0]->isSelected, c.selected[2]);
  }
}

TEST(MergeConflictModel, InsertSplitsAtTheFirstLineBreak) {
  const struct {
    const char* text;
    qsizetype offset;
    const char* insert;
    const char* kept;
    std::optional<QString> tail;
  } cases[] = {
      {"abc\n", 1, "x", "axbc\n", std::nullopt}, {"abc\n", 1, "\n", "a\n", "bc\n"},         {"abc\n", 3, "\n", "abc\n", "\n"},
      {"abc", 3, "\n", "abc\n", std::nullopt},   {"abc\n", 0, "1\n2\n", "1\n", "2\nabc\n"}, {"", 0, "ü", "ü", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.insert);
    MergeConflict::Line line(ContextType::none, QString::fromUtf8(c.text));
    EXPECT_EQ(line.insert(c.offset, QString::fromUtf8(c.insert)), c.tail);
    EXPECT_EQ(line.text(), QString::fromUtf8(c.kept));
    EXPECT_EQ(line.originalString, QString::fromUtf8(c.text));
  }
}

TEST(MergeConflictModel, RowCountsAndTitle) {
  auto chunk = std::make_shared<Conflict>(side(Part::remote, {"1", "2", "3"}), side(Part::local, {"a"}), QString(), QString());
  chunk->adoptLines();
  chunk->remoteLines[0]->select();
  chunk->remoteLines[1]->select();
  EXPECT_EQ(chunk->rowCount(), 3);
  for (int i = 0; i < 3; ++i) chunk->localLines[0]->insert(0, "x\n");
  EXPECT_EQ(chunk->rowCount(), 3);

  MergeConflict file;
  auto second = conflict();
  file.chunks = {conflict(), second};
  EXPECT_EQ(file.title(), "Resolved 0 conflicts of 2");
  second->chooseRemote();
  EXPECT_EQ(file.title(), "Resolved 1 conflict of 2");
  file.chunks = {second};
  EXPECT_EQ(file.title(), "All conflicts resolved");
  file.chunks = {conflict()};
  EXPECT_EQ(file.title(), "Resolved 0 conflicts of 1");
}

TEST(MergeConflictModel, LineWithoutParent) {
  LogCapture log;
  MergeConflict::SelectableLine line(ContextType::add, "x\n", Part::local);
  line.select();
  EXPECT_TRUE(line.isSelected);
  line.customString = "y\n";
  line.Line::removeFromParentChunk();
  EXPECT_TRUE(log.contains("Line has no parent chunk!"));
  EXPECT_EQ(line.text(), "y\n");
}
