#include "Models/MergeMessage.h"

#include <QFile>

#include "Git/Commands/Config/GetConfigValueGitCommand.h"
#include "Git/Process/TextEncoding.h"

namespace {
std::optional<QString> readMessageFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  auto text = decodeString(file.readAll());
  if (!text || text->trimmed().isEmpty()) return std::nullopt;
  return text;
}

// The character git starts its own notes with; "auto" and unreadable values keep "#".
QChar commentCharacter(const GitModule& module) {
  for (const ConfigLocation location : {ConfigLocation::local, ConfigLocation::global}) {
    const auto value = GetConfigValueGitCommand::execute(module, QStringLiteral("core.commentChar"), location);
    if (!value || !value.value()) continue;
    return value.value()->size() == 1 ? value.value()->at(0) : QLatin1Char('#');
  }
  return QLatin1Char('#');
}

QString withoutComments(const QString& text, QChar comment) {
  QStringList kept;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    if (!line.startsWith(comment)) kept << line;
  }
  return kept.join(QLatin1Char('\n'));
}
}  // namespace

std::optional<CommitMessage> readMergeMessage(const GitModule& module) {
  auto text = readMessageFile(module.gitDirectoryUrl + QStringLiteral("/SQUASH_MSG"));
  if (!text) text = readMessageFile(module.gitDirectoryUrl + QStringLiteral("/MERGE_MSG"));
  if (!text) return std::nullopt;
  // After a conflict git adds "# Conflicts:" and the paths as comments, which it drops
  // itself when it commits through an editor; committed from here they would stay.
  return CommitMessage::fromText(withoutComments(*text, commentCharacter(module)));
}
