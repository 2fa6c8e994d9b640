#include <gtest/gtest.h>

#include "Models/RebaseTodoList.h"

namespace {

using Command = InteractiveRebaseCommand;

const QString shaA = "327a537fe72515c7122ae7b9244cb6748caa66a9";
const QString shaB = "50ba4148bb4a377e0ee77ff7f98b5f1fe5527856";

// Rows newest first, named by their message.
std::vector<TodoListItem> items(const std::vector<std::pair<Command, QString>>& rows) {
  std::vector<TodoListItem> list;
  for (const auto& [command, message] : rows) {
    TodoListItem item;
    item.command = command;
    item.sha = message.repeated(40).left(40);
    item.originalMessage = message;
    list.push_back(item);
  }
  return list;
}

TEST(RebaseTodoList, ReadsTheIdsOfGitsLinesAndSkipsTheRest) {
  struct Case {
    const char* name;
    QString text;
    QStringList shas;
  };
  const Case cases[] = {
      // As git 2.39 writes it with our instruction format and "^" comments.
      {"git's own list",
       QStringLiteral("p 327a537 #!_%1 ^ empty\np 50ba414 #!_%2 Second\n\n^ Rebase 50ba414 onto a0337f8 (2 commands)\n^\n")
           .arg(shaA, shaB),
       {shaA, shaB}},
      {"only comments", "^ Rebase onto a0337f8\n^\n# note\n", {}},
      {"a short line with a marker", "p 327a537 #!_327a537fe72515c7122ae7b\n", {}},
      {"a line with the comment prefix", QStringLiteral("# p 327a537 #!_%1 subject\n").arg(shaA), {}},
      {"an id that isn't hex", QStringLiteral("p 327a537 #!_%1 subject\n").arg(QString(40, u'z')), {}},
      {"the command word is not read", QStringLiteral("squash 327a537 #!_%1 subject\n").arg(shaA), {shaA}},
  };
  for (const Case& c : cases) EXPECT_EQ(RebaseTodoList::parseShas(c.text), c.shas) << c.name;
}

// Each command word and the oldest-first order are written for real rebases
// (InteractiveRebaseTests); an empty list becomes git's noop.
TEST(RebaseTodoList, WritesNoopWhenEmpty) {
  EXPECT_EQ(RebaseTodoList::todoText({}), "noop\n");
}

TEST(RebaseTodoList, DrawsSquashGroupsAndTurnsASquashWithNothingBelowIntoAPick) {
  struct Case {
    const char* name;
    std::vector<Command> commands;  // newest first
    std::vector<Command> after;
    std::vector<SquashType> types;
  };
  using S = SquashType;
  const Case cases[] = {
      {"one squash", {Command::pick, Command::squash, Command::pick}, {Command::pick, Command::squash, Command::pick},
       {S::none, S::start, S::target}},
      {"three in a group", {Command::squash, Command::fixup, Command::reword}, {Command::squash, Command::fixup, Command::reword},
       {S::start, S::middle, S::target}},
      {"a drop inside the group", {Command::squash, Command::drop, Command::pick}, {Command::squash, Command::drop, Command::pick},
       {S::start, S::through, S::target}},
      {"a drop above the group", {Command::drop, Command::squash, Command::pick}, {Command::drop, Command::squash, Command::pick},
       {S::none, S::start, S::target}},
      {"squash on the oldest row", {Command::pick, Command::squash}, {Command::pick, Command::pick}, {S::none, S::none}},
      {"squash over a dropped oldest row", {Command::fixup, Command::drop}, {Command::pick, Command::drop}, {S::none, S::none}},
      {"two groups", {Command::fixup, Command::edit, Command::squash, Command::pick},
       {Command::fixup, Command::edit, Command::squash, Command::pick}, {S::start, S::target, S::start, S::target}},
  };
  for (const Case& c : cases) {
    std::vector<std::pair<Command, QString>> rows;
    for (size_t i = 0; i < c.commands.size(); ++i) rows.push_back({c.commands[i], QString::number(i)});
    auto list = items(rows);
    RebaseTodoList::normalize(list);
    for (size_t i = 0; i < list.size(); ++i) {
      EXPECT_EQ(list[i].command, c.after[i]) << c.name << " row " << i;
      EXPECT_EQ(list[i].squashType, c.types[i]) << c.name << " row " << i;
    }
  }
}

TEST(RebaseTodoList, GroupMessageJoinsSquashesOldestFirstAndIsAskedAtEveryMember) {
  auto list = items({{Command::squash, "C"}, {Command::fixup, "B"}, {Command::pick, "A"}, {Command::reword, "Z"}});
  list[3].customMessage = "Z new";
  RebaseTodoList::normalize(list);
  ASSERT_TRUE(list[2].groupMessage);
  EXPECT_EQ(*list[2].groupMessage, "A\n\nC");
  const QHash<QString, QString> messages = RebaseTodoList::messages(list);
  EXPECT_EQ(messages.value(list[0].sha), "A\n\nC");
  EXPECT_EQ(messages.value(list[1].sha), "A\n\nC");
  EXPECT_FALSE(messages.contains(list[2].sha));
  EXPECT_EQ(messages.value(list[3].sha), "Z new");

  // Fixups alone keep the target's message: git asks nothing.
  auto fixups = items({{Command::fixup, "B"}, {Command::pick, "A"}});
  RebaseTodoList::normalize(fixups);
  EXPECT_TRUE(RebaseTodoList::messages(fixups).isEmpty());
}

TEST(RebaseTodoList, MovesRowsAsABlock) {
  struct Case {
    const char* name;
    std::vector<int> rows;
    int before;
    QString order;
    std::vector<int> moved;
  };
  const Case cases[] = {
      {"one row up", {2}, 0, "cabde", {0}},
      {"one row down", {0}, 3, "bcade", {2}},
      {"two apart to the end", {0, 2}, 5, "bdeac", {3, 4}},
      {"onto itself", {1}, 1, "abcde", {1}},
  };
  for (const Case& c : cases) {
    std::vector<std::pair<Command, QString>> rows;
    for (QChar ch : QString("abcde")) rows.push_back({Command::pick, QString(ch)});
    auto list = items(rows);
    EXPECT_EQ(RebaseTodoList::move(list, c.rows, c.before), c.moved) << c.name;
    QString order;
    for (const auto& item : list) order += item.originalMessage;
    EXPECT_EQ(order, c.order) << c.name;
  }
}

}  // namespace
