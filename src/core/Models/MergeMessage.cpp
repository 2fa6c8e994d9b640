#include "Models/MergeMessage.h"

#include <QFile>

#include "Git/Process/TextEncoding.h"

namespace {
std::optional<QString> readMessageFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  auto text = decodeString(file.readAll());
  if (!text || text->trimmed().isEmpty()) return std::nullopt;
  return text;
}
}  // namespace

std::optional<CommitMessage> readMergeMessage(const GitModule& module) {
  auto text = readMessageFile(module.gitDirectoryUrl + QStringLiteral("/SQUASH_MSG"));
  if (!text) text = readMessageFile(module.gitDirectoryUrl + QStringLiteral("/MERGE_MSG"));
  if (!text) return std::nullopt;
  return CommitMessage::fromText(*text);
}
