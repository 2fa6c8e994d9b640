#include "Models/ChangedFile.h"

#include "Extensions/GitQuotedPath.h"
#include "Extensions/NaturalCompare.h"
#include "Logging/AdvancedLogger.h"

bool ChangedFile::operator==(const ChangedFile& other) const {
  const Submodule* mine = changedSubmodule();
  const Submodule* theirs = other.changedSubmodule();
  if ((mine == nullptr) != (theirs == nullptr) || (mine && !(*mine == *theirs))) return false;
  return oldPath == other.oldPath && path == other.path && changeType == other.changeType && staged == other.staged &&
         tracked == other.tracked && isNew == other.isNew && isDirectory == other.isDirectory && treeIsh == other.treeIsh &&
         fileMode == other.fileMode;
}

int ChangedFile::compare(const ChangedFile& a, const ChangedFile& b) {
  if (const int byPath = NaturalCompare::compare(a.path, b.path)) return byPath;
  if (a.staged != b.staged) return a.staged ? 1 : -1;
  if (a.changeType != b.changeType) return static_cast<int>(a.changeType) < static_cast<int>(b.changeType) ? -1 : 1;
  if (a.oldPath.has_value() != b.oldPath.has_value()) return a.oldPath.has_value() ? 1 : -1;
  if (a.oldPath) return NaturalCompare::compare(*a.oldPath, *b.oldPath);
  return 0;
}

QString ChangedFile::changeTypeName(ChangeType type) {
  switch (type) {
    case ChangeType::modified: return QStringLiteral("modified");
    case ChangeType::added: return QStringLiteral("added");
    case ChangeType::deleted: return QStringLiteral("deleted");
    case ChangeType::ignored: return QStringLiteral("ignored");
    case ChangeType::renamed: return QStringLiteral("renamed");
    case ChangeType::copied: return QStringLiteral("copied");
    case ChangeType::unmerged: return QStringLiteral("unmerged");
    case ChangeType::typeChanged: return QStringLiteral("changed");
    case ChangeType::unknown: break;
  }
  return QStringLiteral("unknown");
}

std::optional<ChangedFile> ChangedFile::fromDiffLine(QStringView line, bool staged, const std::optional<QString>& treeIsh) {
  const auto parts = line.split(u'\t');
  if (parts.size() < 2) {
    LOG_ERROR(QStringLiteral("Cannot parse filepath in '%1'").arg(line));
    return std::nullopt;
  }
  QStringView status = parts[0];
  std::optional<QString> fileMode;
  if (status.startsWith(u':')) {
    // ":<old mode> <new mode> <old sha> <new sha> <status>"
    const auto fields = status.split(u' ', Qt::SkipEmptyParts);
    if (fields.size() >= 2) fileMode = fields[1].toString();
    status = fields.isEmpty() ? QStringView() : fields.back();
  }
  const ChangeType type = status.isEmpty() ? ChangeType::unknown : changeTypeFromStatusLetter(status.front());
  std::optional<QString> oldPath;
  QString path;
  if (parts.size() == 3) {
    oldPath = GitQuotedPath::unquote(parts[1]);
    path = GitQuotedPath::unquote(parts[2]);
  } else {
    path = GitQuotedPath::unquote(parts[1]);
  }
  return ChangedFile(std::move(oldPath), std::move(path), type, staged, true, false, false, treeIsh, std::move(fileMode));
}
