#include "Models/RebaseTodoList.h"

#include <algorithm>

namespace RebaseTodoList {

namespace {

constexpr int shaLength = 40;
// "p 1234567 #!_" and a full sha: anything shorter holds no id.
constexpr int shortestLine = 51;

bool isKept(InteractiveRebaseCommand command) {
  return command == InteractiveRebaseCommand::pick || command == InteractiveRebaseCommand::reword ||
         command == InteractiveRebaseCommand::edit;
}

bool isHex(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
  });
}

// The rows that fold into `target` (pick, reword or edit), newest first, and the
// dropped rows they pass; stops at the next kept row above.
std::vector<int> rowsAbove(const std::vector<TodoListItem>& items, int target) {
  std::vector<int> rows;
  for (int row = target - 1; row >= 0 && !isKept(items[row].command); --row) rows.push_back(row);
  return rows;
}

}  // namespace

QStringList parseShas(const QString& text, const QString& commentPrefix, const QString& idMarker) {
  QStringList shas;
  for (const QString& rawLine : text.split(QLatin1Char('\n'))) {
    const QString line = rawLine.trimmed();
    if (line.isEmpty() || line.startsWith(commentPrefix) || line.size() < shortestLine) continue;
    const int marker = line.indexOf(idMarker);
    if (marker < 0) continue;
    const QString sha = line.mid(marker + idMarker.size(), shaLength);
    if (sha.size() != shaLength || !isHex(sha)) continue;
    shas.append(sha.toLower());
  }
  return shas;
}

QString todoText(const std::vector<TodoListItem>& items) {
  if (items.empty()) return QStringLiteral("noop\n");
  QStringList lines;
  for (auto it = items.rbegin(); it != items.rend(); ++it) lines.append(commandWord(it->command) + QLatin1Char(' ') + it->sha);
  return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

bool canSquash(const std::vector<TodoListItem>& items, int row) {
  for (int below = row + 1; below < static_cast<int>(items.size()); ++below) {
    if (isKept(items[below].command)) return true;
  }
  return false;
}

void normalize(std::vector<TodoListItem>& items) {
  const int count = static_cast<int>(items.size());
  bool kept = false;
  for (int row = count - 1; row >= 0; --row) {
    TodoListItem& item = items[row];
    item.squashType = SquashType::none;
    item.groupMessage.reset();
    if (isSquashing(item.command) && !kept) item.command = InteractiveRebaseCommand::pick;
    if (isKept(item.command)) kept = true;
  }
  for (int target = 0; target < count; ++target) {
    if (!isKept(items[target].command)) continue;
    std::vector<int> rows = rowsAbove(items, target);
    // Dropped rows above the group's newest member are not part of it.
    while (!rows.empty() && !isSquashing(items[rows.back()].command)) rows.pop_back();
    if (rows.empty()) continue;
    QStringList parts{items[target].message()};
    for (int row : rows) {
      TodoListItem& item = items[row];
      if (item.command == InteractiveRebaseCommand::squash) parts.append(item.message());
      item.squashType = !isSquashing(item.command) ? SquashType::through : row == rows.back() ? SquashType::start : SquashType::middle;
    }
    items[target].squashType = SquashType::target;
    for (QString& part : parts) part = part.trimmed();
    items[target].groupMessage = parts.join(QStringLiteral("\n\n"));
  }
}

QHash<QString, QString> messages(const std::vector<TodoListItem>& items) {
  QHash<QString, QString> result;
  for (int row = 0; row < static_cast<int>(items.size()); ++row) {
    const TodoListItem& item = items[row];
    if (item.command == InteractiveRebaseCommand::reword) result.insert(item.sha, item.message());
    if (item.squashType != SquashType::target || !item.groupMessage) continue;
    const std::vector<int> rows = rowsAbove(items, row);
    const bool asks = std::any_of(rows.begin(), rows.end(),
                                  [&](int above) { return items[above].command == InteractiveRebaseCommand::squash; });
    // A group of fixups only keeps the target's message without asking.
    if (!asks) continue;
    for (int above : rows) {
      if (isSquashing(items[above].command)) result.insert(items[above].sha, *item.groupMessage);
    }
  }
  return result;
}

std::vector<int> move(std::vector<TodoListItem>& items, std::vector<int> rows, int before) {
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  std::vector<TodoListItem> moving;
  int insertAt = before;
  for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
    if (*it < 0 || *it >= static_cast<int>(items.size())) continue;
    moving.insert(moving.begin(), items[*it]);
    items.erase(items.begin() + *it);
    if (*it < before) --insertAt;
  }
  insertAt = std::clamp(insertAt, 0, static_cast<int>(items.size()));
  items.insert(items.begin() + insertAt, moving.begin(), moving.end());
  std::vector<int> moved;
  for (int i = 0; i < static_cast<int>(moving.size()); ++i) moved.push_back(insertAt + i);
  return moved;
}

}  // namespace RebaseTodoList
