#include "Git/Merge/LoadMergeConflict.h"

#include <QDir>
#include <QFile>

#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Git/Merge/MergeConflictParser.h"
#include "Logging/AdvancedLogger.h"
#include "Models/FileContent/TextDiffFileContent.h"

namespace {
GitResult<QString> diffText(const GitModule& module, const QString& path) {
  const auto file = std::make_shared<const ChangedFile>(std::nullopt, path, ChangeType::unmerged, false, true, false);
  DiffSettings settings;
  settings.contextSize = 10000;
  settings.showEntireFile = true;
  auto content = GetWorkingDirectoryFileChangesGitCommand::execute(module, file, false, settings);
  if (content.isFailure()) return content.error();
  if (content.value()->kind() != DiffFileContent::Kind::text) return Error::Generic{QStringLiteral("Only text files can be merged")};
  return static_cast<const TextDiffFileContent&>(*content.value()).diffString;
}
// The combined diff does not say that the file's last line has no newline; the file does.
void keepMissingFinalNewline(const GitModule& module, const QString& path, MergeConflict& conflict) {
  if (conflict.chunks.empty() || conflict.chunks.back()->kind() != MergeConflict::Chunk::Kind::context) return;
  QFile file(QDir(module.repositoryPath).filePath(path));
  if (!file.open(QIODevice::ReadOnly) || file.size() == 0 || !file.seek(file.size() - 1) || file.read(1) == "\n") return;
  auto& lines = static_cast<MergeConflict::ContextChunk&>(*conflict.chunks.back()).lines;
  if (!lines.empty() && lines.back()->originalString.endsWith(u'\n')) lines.back()->originalString.chop(1);
}
}  // namespace

GitResult<QString> LoadMergeConflict::combinedDiff(const GitModule& module, const QString& path) { return diffText(module, path); }

GitResult<std::shared_ptr<MergeConflict>> LoadMergeConflict::execute(const GitModule& module, const QString& path) {
  auto text = diffText(module, path);
  if (text.isFailure()) return text.error();
  if (text.value().startsWith(QStringLiteral("* Unmerged path"))) {
    // A side deleted the file: there are no lines to merge, only a side to take.
    return Error::Generic{QStringLiteral("'") + path + QStringLiteral("' was deleted on one side; choose a side to keep.")};
  }
  auto conflict = MergeConflictParser().parse(path, text.value());
  if (!conflict) {
    LOG_ERROR(QStringLiteral("cannot parse merge conflict for '") + path + QStringLiteral("'"));
    return Error::CannotParse{QStringLiteral("cannot parse merge conflict for '") + path + QStringLiteral("'")};
  }
  keepMissingFinalNewline(module, path, *conflict);
  return conflict;
}
