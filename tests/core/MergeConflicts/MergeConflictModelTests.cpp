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
  const auto L = [](int i) { return [i](Conflict& c) { return c.localLines[size_t(i)]; }; };
  const auto select = [](auto line) -> Op { return [line](Conflict& c) { line(c)->select(); }; };
  const auto meld = [](auto line, auto other) -> Op { return [=](Conflict& c) { line(c)->meldWith(*other(c)); }; };
  const auto cut = [](auto line, qsizetype from, qsizetype length) -> Op {
    return [=](Conflict& c) { line(c)->removeSubrange(from, length); };
  };
  const auto R0 = [](Conflict& c) { return c.remoteLines[0]; };
  const Op local = [](Conflict& c) { c.chooseLocal(); };
  const Op remote = [](Conflict& c) { c.chooseRemote(); };
  const Op typeX = [&](Conflict& c) { L(0)(c)->insert(0, "x"); };
  const Op removeL1 = [&](Conflict& c) { L(0)(c)->removeFromParentChunk(); };
  const Op addRemoteSide = [](Conflict& c) { c.selectSide(Part::remote); };
  const Op dropLocalSide = [](Conflict& c) { c.unselectSide(Part::local); };
  const struct {
    const char* name;
    std::vector<Op> ops;
    QString result;
    std::array<bool, 3> selected;
  } cases[] = {
      {"select a line", {select(L(1))}, "L2\n", {false, true, false}},
      {"select twice changes nothing", {select(L(1)), select(L(1))}, "L2\n", {false, true, false}},
      {"selection order is result order", {select(R0), select(L(0))}, "R1\nL1\n", {true, false, true}},
      {"choose remote after local", {local, remote}, "R1\n", {false, false, true}},
      {"choose keeps none of an edit", {local, typeX, local}, "L1\nL2\n", {true, true, false}},
      {"clear", {local, [](Conflict& c) { c.clear(); }}, QString(), {false, false, false}},
      {"remove from parent unselects", {local, removeL1}, "L2\n", {false, true, false}},
      {"meld takes the next text and unselects it", {local, cut(L(0), 2, 3), meld(L(0), L(1))}, "L1L2\n", {true, false, false}},
      {"a melded line can be selected again", {local, meld(L(0), L(1)), select(L(1))}, "L1\nL2\nL2\n", {true, true, false}},
      {"meld of an unselected line leaves it out", {select(L(0)), meld(L(0), R0)}, "L1\nR1\n", {true, false, false}},
      {"remove subrange to nothing leaves the result", {local, cut(L(1), 0, 3)}, "L1\n", {true, false, false}},
      {"invalid subrange does nothing", {local, cut(L(1), 1, 9)}, "L1\nL2\n", {true, true, false}},
      {"select side keeps the other", {local, addRemoteSide}, "L1\nL2\nR1\n", {true, true, true}},
      {"unselect side", {local, addRemoteSide, dropLocalSide}, "R1\n", {false, false, true}},
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
