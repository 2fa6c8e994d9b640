#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "Extensions/DecimalInteger.h"
#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"
#include "Models/PlainReference.h"

namespace {

const QString kStopwatchName = QStringLiteral("GetRepositoryStateGitCommand");

class Markers {
 public:
  explicit Markers(const QString& gitDirectory) : directory_(gitDirectory) {}

  QString path(const QString& name) const { return directory_ + QLatin1Char('/') + name; }
  bool isFile(const QString& name) const { return QFileInfo(path(name)).isFile(); }
  bool isDirectory(const QString& name) const { return QFileInfo(path(name)).isDir(); }

  GitResult<QString> read(const QString& name) const {
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly)) {
      return Error::UnknownException{QStringLiteral("Cannot read '%1': %2").arg(file.fileName(), file.errorString())};
    }
    return QString::fromUtf8(file.readAll());
  }
  // Absent or unreadable gives nothing; for companions that may be missing.
  std::optional<QString> readOptional(const QString& name) const {
    auto text = read(name);
    if (!text) return std::nullopt;
    return text.value();
  }

 private:
  QString directory_;
};

GitResult<QString> revParse(const GitModule& module, const QString& name) {
  const GitResponse response = GitRequest(module, {QStringLiteral("rev-parse"), name}).execute();
  if (!response.isSuccess()) return failureResult<QString>(response);
  return response.output.trimmed();
}

GitResult<ReferencePtr> referenceAt(const GitModule& module, const QString& name, const ReferenceList& references) {
  auto sha = revParse(module, name);
  if (!sha) return sha.mapError<ReferencePtr>();
  return GetRepositoryStateGitCommand::referenceForSha(sha.value(), references);
}

GitResult<int> readNumber(const Markers& markers, const QString& name) {
  auto text = markers.read(name);
  if (!text) return text.mapError<int>();
  const auto number = DecimalInteger::parse(QStringView(text.value()).trimmed());
  if (!number) return Error::UnknownException{QStringLiteral("Cannot read a number from '%1'").arg(markers.path(name))};
  return static_cast<int>(*number);
}

// "pick 1a2b3c4 subject" -> "1a2b3c4"; the first word after the command that is an
// object name, since some commands ("fixup -C", "exec") put other words there.
std::optional<QString> entrySha(const QString& entry) {
  static const QRegularExpression hex(QStringLiteral("^[0-9a-fA-F]{4,64}$"));
  const QStringList words = entry.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  for (qsizetype i = 1; i < words.size(); ++i) {
    if (hex.match(words[i]).hasMatch()) return words[i];
  }
  return std::nullopt;
}

// A mail-box rebase. Gives no state for a "git am" session, which shares the directory.
GitResult<std::optional<RepositoryState>> readApplyRebase(const GitModule& module, const Markers& markers,
                                                         const UnmergedFileList& unmergedFiles,
                                                         const ReferenceList& references) {
  using Result = GitResult<std::optional<RepositoryState>>;
  if (markers.isFile(QStringLiteral("rebase-apply/applying"))) return std::optional<RepositoryState>();
  auto our = referenceAt(module, QStringLiteral("ORIG_HEAD"), references);
  if (!our) return our.mapError<std::optional<RepositoryState>>();
  auto their = GetRepositoryStateGitCommand::readHeadReferenceFromFile(markers.path(QStringLiteral("rebase-apply/onto")),
                                                                        references);
  if (!their) return their.mapError<std::optional<RepositoryState>>();
  auto next = readNumber(markers, QStringLiteral("rebase-apply/next"));
  if (!next) return next.mapError<std::optional<RepositoryState>>();
  auto last = readNumber(markers, QStringLiteral("rebase-apply/last"));
  if (!last) return last.mapError<std::optional<RepositoryState>>();
  auto original = markers.read(QStringLiteral("rebase-apply/original-commit"));
  if (!original) return original.mapError<std::optional<RepositoryState>>();

  RepositoryState::RebaseInProgress rebase;
  rebase.our = our.value();
  rebase.their = their.value();
  rebase.activeSha = original.value().trimmed();
  rebase.done = next.value() - 1;
  rebase.total = last.value();
  rebase.unmergedFiles = unmergedFiles;
  return Result(std::optional<RepositoryState>(RepositoryState(std::move(rebase))));
}

GitResult<std::optional<RepositoryState>> readMergeRebase(const Markers& markers, const UnmergedFileList& unmergedFiles,
                                                         const ReferenceList& references) {
  using Result = GitResult<std::optional<RepositoryState>>;
  auto our = GetRepositoryStateGitCommand::readHeadReferenceFromFile(markers.path(QStringLiteral("rebase-merge/orig-head")),
                                                                      references);
  if (!our) return our.mapError<std::optional<RepositoryState>>();
  auto their = GetRepositoryStateGitCommand::readHeadReferenceFromFile(markers.path(QStringLiteral("rebase-merge/onto")),
                                                                        references);
  if (!their) return their.mapError<std::optional<RepositoryState>>();
  const QStringList todo =
      GetRepositoryStateGitCommand::todoEntries(markers.readOptional(QStringLiteral("rebase-merge/git-rebase-todo")).value_or(QString()));
  const QStringList done =
      GetRepositoryStateGitCommand::todoEntries(markers.readOptional(QStringLiteral("rebase-merge/done")).value_or(QString()));

  RepositoryState::RebaseInProgress rebase;
  rebase.our = our.value();
  rebase.their = their.value();
  if (!done.isEmpty()) rebase.activeSha = entrySha(done.back());
  // The last done entry is the one being worked on, not finished yet.
  rebase.done = std::max<int>(0, static_cast<int>(done.size()) - 1);
  rebase.total = static_cast<int>(todo.size() + done.size());
  rebase.unmergedFiles = unmergedFiles;
  if (auto amend = markers.readOptional(QStringLiteral("rebase-merge/amend"))) rebase.amend = amend->trimmed();
  return Result(std::optional<RepositoryState>(RepositoryState(std::move(rebase))));
}

GitResult<RepositoryState> readState(const GitModule& module, const ReferenceList& references) {
  auto unmerged = GetUnmergedFilesGitCommand::execute(module);
  if (!unmerged) return unmerged.mapError<RepositoryState>();
  const UnmergedFileList& unmergedFiles = unmerged.value();
  const Markers markers(module.gitDirectoryUrl);

  if (markers.isFile(QStringLiteral("MERGE_HEAD"))) {
    auto our = referenceAt(module, QStringLiteral("HEAD"), references);
    if (!our) return our.mapError<RepositoryState>();
    auto their = referenceAt(module, QStringLiteral("MERGE_HEAD"), references);
    if (!their) return their.mapError<RepositoryState>();
    return RepositoryState(RepositoryState::MergeInProgress{our.value(), their.value(), unmergedFiles});
  }
  if (markers.isDirectory(QStringLiteral("rebase-apply"))) {
    auto rebase = readApplyRebase(module, markers, unmergedFiles, references);
    if (!rebase) return rebase.mapError<RepositoryState>();
    if (rebase.value()) return *rebase.value();
  }
  if (markers.isDirectory(QStringLiteral("rebase-merge"))) {
    auto rebase = readMergeRebase(markers, unmergedFiles, references);
    if (!rebase) return rebase.mapError<RepositoryState>();
    if (rebase.value()) return *rebase.value();
  }
  if (markers.isFile(QStringLiteral("CHERRY_PICK_HEAD"))) {
    auto head = referenceAt(module, QStringLiteral("HEAD"), references);
    if (!head) return head.mapError<RepositoryState>();
    auto picked = referenceAt(module, QStringLiteral("CHERRY_PICK_HEAD"), references);
    if (!picked) return picked.mapError<RepositoryState>();
    return RepositoryState(RepositoryState::CherryPickInProgress{head.value(), picked.value(), unmergedFiles});
  }
  if (markers.isFile(QStringLiteral("REVERT_HEAD"))) {
    auto reverted = revParse(module, QStringLiteral("REVERT_HEAD"));
    if (!reverted) return reverted.mapError<RepositoryState>();
    return RepositoryState(RepositoryState::RevertInProgress{reverted.value(), unmergedFiles});
  }
  if (markers.isDirectory(QStringLiteral("sequencer"))) return RepositoryState(RepositoryState::SequencerInProgress{});
  if (markers.isFile(QStringLiteral("SQUASH_MSG"))) return RepositoryState(RepositoryState::SquashInProgress{unmergedFiles});
  if (!unmergedFiles.empty()) {
    auto head = referenceAt(module, QStringLiteral("HEAD"), references);
    if (!head) return head.mapError<RepositoryState>();
    return RepositoryState(RepositoryState::UnmergedFiles{head.value(), unmergedFiles});
  }
  if (markers.isFile(QStringLiteral("BISECT_START"))) {
    auto start = GetRepositoryStateGitCommand::readReferenceFromFile(markers.path(QStringLiteral("BISECT_START")), references);
    if (!start) return start.mapError<RepositoryState>();
    std::optional<QString> current;
    if (auto expected = markers.readOptional(QStringLiteral("BISECT_EXPECTED_REV"))) current = expected->trimmed();
    return RepositoryState(RepositoryState::BisectInProgress{start.value(), current});
  }
  return RepositoryState(RepositoryState::Ok{});
}

GitResult<QString> readTrimmed(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    return Error::UnknownException{QStringLiteral("Cannot read '%1': %2").arg(path, file.errorString())};
  }
  return QString::fromUtf8(file.readAll()).trimmed();
}

}  // namespace

GitResult<RepositoryState> GetRepositoryStateGitCommand::execute(const GitModule& module, const ReferenceList& references,
                                                                 JobProgress* progress) {
  if (progress) progress->start(kStopwatchName);
  auto state = readState(module, references);
  if (progress) progress->end(kStopwatchName);
  return state;
}

GitResult<ReferencePtr> GetRepositoryStateGitCommand::readHeadReferenceFromFile(const QString& path,
                                                                                const ReferenceList& references) {
  auto sha = readTrimmed(path);
  if (!sha) return sha.mapError<ReferencePtr>();
  return referenceForSha(sha.value(), references);
}

GitResult<ReferencePtr> GetRepositoryStateGitCommand::readReferenceFromFile(const QString& path,
                                                                            const ReferenceList& references) {
  auto name = readTrimmed(path);
  if (!name) return name.mapError<ReferencePtr>();
  return referenceForName(name.value(), references);
}

ReferencePtr GetRepositoryStateGitCommand::referenceForSha(const QString& sha, const ReferenceList& references) {
  for (const ReferencePtr& reference : references) {
    if (reference && reference->sha == sha) return reference;
  }
  return std::make_shared<const PlainReference>(sha);
}

ReferencePtr GetRepositoryStateGitCommand::referenceForName(const QString& name, const ReferenceList& references) {
  // A short name such as "main" is also the name of "origin/main": the fullest match
  // wins, then a local branch, then any short name.
  const QString asBranch = QStringLiteral("refs/heads/") + name;
  const auto find = [&](auto matches) -> ReferencePtr {
    for (const ReferencePtr& reference : references) {
      if (reference && matches(*reference)) return reference;
    }
    return nullptr;
  };
  if (auto found = find([&](const Reference& r) { return r.fullReference == name; })) return found;
  if (auto found = find([&](const Reference& r) { return r.fullReference == asBranch; })) return found;
  if (auto found = find([&](const Reference& r) { return r.fullName == name || r.name == name; })) return found;
  static const QRegularExpression fullSha(QStringLiteral("^[0-9a-f]{40}([0-9a-f]{24})?$"));
  if (fullSha.match(name).hasMatch()) return referenceForSha(name, references);
  return std::make_shared<const PlainReference>(name);
}

QStringList GetRepositoryStateGitCommand::todoEntries(const QString& text) {
  QStringList entries;
  for (const QStringView line : QStringView(text).split(u'\n')) {
    const QStringView entry = line.trimmed();
    if (entry.isEmpty() || entry.startsWith(u'#')) continue;
    entries << entry.toString();
  }
  return entries;
}
