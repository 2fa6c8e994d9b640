#pragma once
// The todo list of an interactive rebase: read from the file git hands over, edited as
// a list newest first (as the commit list shows it), written back oldest first.
//
// Squash groups: walking from the oldest row up, a squash or fixup folds into the
// nearest row below it that is kept (pick, reword or edit); dropped rows in between are
// passed through. A squash or fixup with no such row below can't stand and falls back to
// pick. The target carries the group's message: its own and those of the squashed rows,
// oldest first as git would join them (fixups give none).
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

#include "Models/TodoListItem.h"

namespace RebaseTodoList {

// What git is told to put behind each line: "#!_<full sha>".
inline QString idMarker() { return QStringLiteral("#!_"); }
inline QString commentPrefix() { return QStringLiteral("#"); }

// The full ids of the file's lines, oldest first. Blank, comment and short lines are
// skipped; the command word of a line is not read.
QStringList parseShas(const QString& text, const QString& commentPrefix = RebaseTodoList::commentPrefix(),
                      const QString& idMarker = RebaseTodoList::idMarker());

// The file for git: one "<command> <sha>" per item, oldest first; "noop" for none.
// `items` is newest first.
QString todoText(const std::vector<TodoListItem>& items);

// Recomputes squash types and group messages after an edit; a squash that has nothing
// below it to fold into becomes a pick.
void normalize(std::vector<TodoListItem>& items);

// Whether row `row` (newest first) may fold into a row below it.
bool canSquash(const std::vector<TodoListItem>& items, int row);

// Messages for git's questions during the run, by the sha git is at when it asks: a
// reworded commit's own, and the group message for each row of a group with a squash
// (git asks at the group's last row). Needs normalized items.
QHash<QString, QString> messages(const std::vector<TodoListItem>& items);

// Moves the rows `rows` (any order) to stand before row `before` (rows.size() for the end).
// Gives the new indexes of the moved rows.
std::vector<int> move(std::vector<TodoListItem>& items, std::vector<int> rows, int before);

}  // namespace RebaseTodoList
