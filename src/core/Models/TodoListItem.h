#pragma once
// One commit of an interactive rebase as the todo sheet shows and edits it.
#include <QDateTime>
#include <QString>
#include <optional>

// The words are git's own.
enum class InteractiveRebaseCommand { pick, reword, edit, squash, fixup, drop };

// A row's place in a squash group, for drawing. `target` is the commit the group folds
// into; above it (newer) the group starts at `start`, goes on through `middle` members,
// and passes `through` rows that are dropped on the way.
enum class SquashType { none, start, middle, through, target };

QString commandWord(InteractiveRebaseCommand command);
std::optional<InteractiveRebaseCommand> commandFromWord(const QString& word);
// Folds into the commit below it.
inline bool isSquashing(InteractiveRebaseCommand command) {
  return command == InteractiveRebaseCommand::squash || command == InteractiveRebaseCommand::fixup;
}

struct TodoListItem {
  InteractiveRebaseCommand command = InteractiveRebaseCommand::pick;
  QString sha;
  QString originalMessage;
  QString author;
  QDateTime authorDate;
  std::optional<QString> groupMessage;   // set on the target of a squash group
  std::optional<QString> customMessage;  // typed by the user with reword
  SquashType squashType = SquashType::none;

  QString message() const { return customMessage.value_or(originalMessage); }
  QString subject() const { return message().section(QLatin1Char('\n'), 0, 0); }

  bool operator==(const TodoListItem&) const = default;
};
