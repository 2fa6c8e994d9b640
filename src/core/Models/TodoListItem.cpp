#include "Models/TodoListItem.h"

#include <array>
#include <utility>

namespace {
const std::array<std::pair<InteractiveRebaseCommand, const char*>, 6> words{{
    {InteractiveRebaseCommand::pick, "pick"},
    {InteractiveRebaseCommand::reword, "reword"},
    {InteractiveRebaseCommand::edit, "edit"},
    {InteractiveRebaseCommand::squash, "squash"},
    {InteractiveRebaseCommand::fixup, "fixup"},
    {InteractiveRebaseCommand::drop, "drop"},
}};
}  // namespace

QString commandWord(InteractiveRebaseCommand command) {
  for (const auto& [value, word] : words) {
    if (value == command) return QString::fromLatin1(word);
  }
  return QStringLiteral("pick");
}

std::optional<InteractiveRebaseCommand> commandFromWord(const QString& word) {
  for (const auto& [value, text] : words) {
    if (word == QLatin1String(text)) return value;
  }
  return std::nullopt;
}
