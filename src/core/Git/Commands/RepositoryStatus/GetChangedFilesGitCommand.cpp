#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"

#include <QHash>
#include <algorithm>
#include <numeric>

#include "Extensions/NaturalCompare.h"

#include "Git/Process/GitRequest.h"
#include "Jobs/Cancelable.h"
#include "Logging/AdvancedLogger.h"
#include "Models/SubmoduleChangedFile.h"

using ChangeType = ChangedFile::ChangeType;

namespace {

bool isMergeToolTemporary(QStringView path) {
  return path.endsWith(GetChangedFilesGitCommand::local) || path.endsWith(GetChangedFilesGitCommand::base) ||
         path.endsWith(GetChangedFilesGitCommand::remote);
}

bool isUnmerged(QChar x, QChar y) {
  return x == u'U' || y == u'U' || (x == u'A' && y == u'A') || (x == u'D' && y == u'D');
}

std::optional<ChangeType> stagedChangeType(QChar code) {
  switch (code.unicode()) {
    case u'A': return ChangeType::added;
    case u'C': return ChangeType::copied;
    case u'D': return ChangeType::deleted;
    case u'M': return ChangeType::modified;
    case u'R': return ChangeType::renamed;
    case u'T': return ChangeType::typeChanged;
    default: return std::nullopt;
  }
}

// The work tree side knows no copies; a rename there is an intent-to-add file that
// git paired with a deleted one.
std::optional<ChangeType> unstagedChangeType(QChar code) {
  switch (code.unicode()) {
    case u'D': return ChangeType::deleted;
    case u'M': return ChangeType::modified;
    case u'T': return ChangeType::typeChanged;
    case u'R': return ChangeType::renamed;
    default: return std::nullopt;
  }
}

bool hasSourceRecord(QChar code) { return code == u'R' || code == u'C'; }

// Cuts "a\0b\0\0c" into its non-empty pieces without copying.
class RecordWalker {
 public:
  explicit RecordWalker(QStringView text) : text_(text) {}
  std::optional<QStringView> next() {
    while (position_ < text_.size()) {
      qsizetype end = text_.indexOf(QChar(0), position_);
      if (end < 0) end = text_.size();
      const QStringView piece = text_.sliced(position_, end - position_);
      position_ = end + 1;
      if (!piece.isEmpty()) return piece;
    }
    return std::nullopt;
  }

 private:
  QStringView text_;
  qsizetype position_ = 0;
};

}  // namespace

QStringList GetChangedFilesGitCommand::arguments(bool hideUntracked, bool showIgnored) {
  // A read never rewrites the index: the watcher would take that for an outside change.
  QStringList args{QStringLiteral("--no-optional-locks"), QStringLiteral("status"), QStringLiteral("--porcelain"), QStringLiteral("-z")};
  args << (hideUntracked ? QStringLiteral("--untracked-files=no") : QStringLiteral("--untracked-files=all"));
  if (showIgnored) args << QStringLiteral("--ignored");
  return args;
}

QStringList GetChangedFilesGitCommand::readOnlyArguments(bool showIgnored) {
  QStringList args{QStringLiteral("--no-optional-locks"), QStringLiteral("status"), QStringLiteral("--porcelain"),
                   QStringLiteral("--renames"), QStringLiteral("--untracked-files=all"), QStringLiteral("-z")};
  if (showIgnored) args << QStringLiteral("--ignored");
  return args;
}

GitResult<GetChangedFilesGitCommand::ChangedFilesCollection> GetChangedFilesGitCommand::execute(
    const GitModule& module, const SubmoduleList& submodules, bool hideUntracked, bool showIgnored, Cancelable* progress) {
  const GitResponse response = GitRequest(module, arguments(hideUntracked, showIgnored)).execute(false, progress);
  // An interrupted git may end by its signal, which counts as success: its output is
  // cut short and must not pass for the status.
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<ChangedFilesCollection>(response);
  return parse(response.output, submodules);
}

std::optional<GetChangedFilesGitCommand::StatusLine> GetChangedFilesGitCommand::splitStatusLine(QStringView record) {
  if (record.size() < 4) {
    LOG_ERROR(QStringLiteral("Cannot parse changed file in '%1'").arg(record));
    return std::nullopt;
  }
  if (record[2] != u' ') {
    LOG_ERROR(QStringLiteral("Invalid format of status string: '%1'").arg(record));
    return std::nullopt;
  }
  return StatusLine{record[0], record[1], record.sliced(3)};
}

int GetChangedFilesGitCommand::codeIndex(QChar code) {
  switch (code.unicode()) {
    case u'A': return 0;
    case u'C': return 1;
    case u'D': return 2;
    case u'!': return 3;
    case u'M': return 4;
    case u'R': return 5;
    case u'T': return 6;
    case u'U': return 7;
    case u'?': return 8;
    case u'X': return 9;
    default: return 10;
  }
}

GetChangedFilesGitCommand::ChangedFilesCollection GetChangedFilesGitCommand::parse(QStringView output,
                                                                                   const SubmoduleList& submodules) {
  QHash<QString, const Submodule*> submoduleByPath;
  for (const Submodule& submodule : submodules) submoduleByPath.insert(submodule.path, &submodule);

  ChangedFileList files;
  const auto add = [&](ChangedFile file) {
    if (!submoduleByPath.isEmpty()) {
      if (const Submodule* submodule = submoduleByPath.value(file.path)) {
        files.push_back(std::make_shared<const SubmoduleChangedFile>(file, *submodule));
        return;
      }
    }
    files.push_back(std::make_shared<const ChangedFile>(std::move(file)));
  };

  RecordWalker records(output);
  while (const auto record = records.next()) {
    const auto line = splitStatusLine(*record);
    if (!line) continue;
    const QChar x = line->x;
    const QChar y = line->y;
    // The source of a rename or copy is the next record; it belongs to this one even
    // when the entry itself is dropped below, or it would be read as a record.
    std::optional<QString> source;
    if (hasSourceRecord(x) || hasSourceRecord(y)) {
      if (const auto next = records.next()) source = next->toString();
    }
    if (isMergeToolTemporary(line->path)) continue;
    if (codeIndex(x) == 10 && codeIndex(y) == 10) {
      LOG_ERROR(QStringLiteral("Cannot parse status line: '%1'").arg(*record));
      continue;
    }
    const QString path = line->path.toString();
    if (x == u'?' && y == u'?') {
      add(ChangedFile(std::nullopt, path, ChangeType::added, false, false, true));
      continue;
    }
    if (x == u'!' && y == u'!') {
      add(ChangedFile(std::nullopt, path, ChangeType::ignored, false, false, false));
      continue;
    }
    if (isUnmerged(x, y)) {
      add(ChangedFile(std::nullopt, path, ChangeType::unmerged, false, true, false));
      continue;
    }
    if (x != u' ') {
      if (const auto type = stagedChangeType(x)) {
        add(ChangedFile(hasSourceRecord(x) ? source : std::nullopt, path, *type, true, true, false));
      } else {
        LOG_ERROR(QStringLiteral("Unhandled staged case: '%1'").arg(x));
      }
    }
    if (y != u' ') {
      if (const auto type = unstagedChangeType(y)) {
        add(ChangedFile(hasSourceRecord(y) ? source : std::nullopt, path, *type, false, true, false));
      } else {
        LOG_ERROR(QStringLiteral("Unhandled unstaged case: '%1'").arg(y));
      }
    }
  }

  sort(files);
  ChangedFilesCollection collection;
  collection.filesCount = static_cast<int>(files.size());
  collection.changedFiles = std::move(files);
  return collection;
}

void GetChangedFilesGitCommand::sort(ChangedFileList& files) {
  // A merge sort: stable, so entries that compare equal keep git's order, with one
  // temporary buffer. The comparison is what costs with many files, so each path's
  // natural-order key is made once, into one buffer, and the sort compares keys
  // (plain code units) held beside the entry instead of following pointers to paths.
  struct Entry {
    qsizetype keyStart;
    qsizetype keyLength;
    const ChangedFile* file;
    size_t index;
  };
  QString keys;
  keys.reserve(std::accumulate(files.begin(), files.end(), qsizetype(0),
                               [](qsizetype sum, const ChangedFilePtr& f) { return sum + f->path.size() + 4; }));
  std::vector<Entry> entries;
  entries.reserve(files.size());
  for (size_t i = 0; i < files.size(); ++i) {
    const qsizetype start = keys.size();
    NaturalCompare::appendSortKey(files[i]->path, keys);
    entries.push_back(Entry{start, keys.size() - start, files[i].get(), i});
  }
  const QStringView allKeys(keys);
  std::stable_sort(entries.begin(), entries.end(), [allKeys](const Entry& a, const Entry& b) {
    const int byPath = NaturalCompare::compareKeys(allKeys.sliced(a.keyStart, a.keyLength), allKeys.sliced(b.keyStart, b.keyLength));
    if (byPath != 0) return byPath < 0;
    return ChangedFile::compare(*a.file, *b.file) < 0;  // same path order; the other fields decide
  });
  ChangedFileList sorted;
  sorted.reserve(files.size());
  for (const Entry& entry : entries) sorted.push_back(std::move(files[entry.index]));
  files = std::move(sorted);
}
