#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"

#include <QHash>

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

namespace {

// Which side changed the file, told by which stages exist: a side without its stage
// deleted the file; one with it added the file when there is no base, else modified it.
ChangeType sideChangeType(bool hasBase, bool hasSide) {
  if (!hasSide) return ChangeType::deleted;
  return hasBase ? ChangeType::modified : ChangeType::added;
}

}  // namespace

QStringList GetUnmergedFilesGitCommand::arguments() {
  return {QStringLiteral("ls-files"), QStringLiteral("--unmerged"), QStringLiteral("-z")};
}

GitResult<UnmergedFileList> GetUnmergedFilesGitCommand::execute(const GitModule& module) {
  const GitResponse response = GitRequest(module, arguments()).execute();
  if (!response.isSuccess()) return failureResult<UnmergedFileList>(response);
  return parseUnmergedFiles(response.output);
}

UnmergedFileList GetUnmergedFilesGitCommand::parseUnmergedFiles(const QString& output) {
  UnmergedFileList files;
  QHash<QString, qsizetype> indexByPath;
  for (QStringView entry : QStringView(output).split(QChar(0), Qt::SkipEmptyParts)) {
    // Only the head is trimmed: blanks at the end belong to the path.
    while (!entry.isEmpty() && entry.front().isSpace()) entry = entry.sliced(1);
    if (entry.isEmpty()) continue;
    const qsizetype tab = entry.indexOf(u'\t');
    const auto fields = tab < 0 ? QList<QStringView>() : entry.first(tab).split(u' ', Qt::SkipEmptyParts);
    const int stage = fields.size() == 3 ? fields[2].toInt() : 0;
    if (tab < 0 || fields.size() != 3 || stage < 1 || stage > 3 || tab + 1 >= entry.size()) {
      LOG_ERROR(QStringLiteral("Cannot parse unmerged file entry '%1'").arg(entry));
      continue;
    }
    const QString path = entry.sliced(tab + 1).toString();
    auto found = indexByPath.constFind(path);
    if (found == indexByPath.constEnd()) {
      found = indexByPath.insert(path, files.size());
      files.push_back(UnmergedFile{path, {}, {}, {}, ChangeType::unknown, ChangeType::unknown});
    }
    UnmergedFile& file = files[*found];
    const auto type = static_cast<UnmergedFileVersionType>(stage - 1);
    UnmergedFileVersion version{type, fields[0].toString(), fields[1].toString()};
    switch (type) {
      case UnmergedFileVersionType::base: file.baseVersion = std::move(version); break;
      case UnmergedFileVersionType::local: file.localVersion = std::move(version); break;
      case UnmergedFileVersionType::remote: file.remoteVersion = std::move(version); break;
    }
  }
  for (UnmergedFile& file : files) {
    file.localChangeType = sideChangeType(file.baseVersion.has_value(), file.localVersion.has_value());
    file.remoteChangeType = sideChangeType(file.baseVersion.has_value(), file.remoteVersion.has_value());
  }
  return files;
}
