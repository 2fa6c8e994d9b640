#include "Services/ExternalDiff.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <atomic>

#include "Git/Commands/WorkingDirectory/CheckoutFileVersionGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Logging/AdvancedLogger.h"
#include "Services/MergeTool.h"

namespace {
struct Side {
  QString revision;  // empty: the index
  QString path;
  QString name;
  bool absent = false;
};

GitResult<QString> writeSide(const GitModule& module, const Side& side, const QString& folder) {
  const QString destination = QDir(folder).filePath(ExternalDiff::sideFileName(side.path, side.name));
  if (!side.absent) return CheckoutFileVersionGitCommand::execute(module, side.revision, side.path, destination);
  QFile empty(destination);
  if (!empty.open(QIODevice::WriteOnly)) {
    const QString message = QStringLiteral("Cannot write '%1': %2").arg(destination, empty.errorString());
    LOG_ERROR(message);
    return Error::Generic{message};
  }
  return destination;
}

QString title(const QString& path, const QString& side) { return path + QStringLiteral(" (") + side + QLatin1Char(')'); }
}  // namespace

QString ExternalDiff::temporaryRoot() {
  static QTemporaryDir root(QDir::tempPath() + QStringLiteral("/jelv-diff-XXXXXX"));
  return root.path();
}

QString ExternalDiff::newFolder() {
  static std::atomic<int> counter{0};
  const QDir root(temporaryRoot());
  const QDateTime stale = QDateTime::currentDateTime().addSecs(-3600);
  for (const QFileInfo& old : root.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    if (old.lastModified() < stale) QDir(old.absoluteFilePath()).removeRecursively();
  }
  const QString name = QString::number(++counter);
  root.mkpath(name);
  return root.filePath(name);
}

QString ExternalDiff::sideFileName(const QString& path, const QString& side) {
  const QString name = QFileInfo(path).fileName();
  const qsizetype dot = name.lastIndexOf(u'.');
  const QString label = QStringLiteral(" (") + side + QLatin1Char(')');
  if (dot <= 0) return name + label;
  return name.left(dot) + label + name.mid(dot);
}

GitResult<ExternalDiffFiles> ExternalDiff::prepareFiles(const GitModule& module, const ChangedFile& file, bool amend,
                                                        const QString& folder) {
  const QString oldPath = file.oldPath.value_or(file.path);
  const bool deleted = file.changeType == ChangeType::deleted;
  ExternalDiffFiles files;
  if (file.staged) {
    const bool added = file.changeType == ChangeType::added;
    const QString base = amend ? GetWorkingDirectoryFileChangesGitCommand::amendBaseTree(module) : QStringLiteral("HEAD");
    const QString baseName = amend ? QStringLiteral("HEAD~1") : QStringLiteral("HEAD");
    const Side older{base, oldPath, baseName, added};
    const Side newer{CheckoutFileVersionGitCommand::indexRevision(), file.path, QStringLiteral("index"), deleted};
    auto local = writeSide(module, older, folder);
    if (!local) return local.mapError<ExternalDiffFiles>();
    auto remote = writeSide(module, newer, folder);
    if (!remote) return remote.mapError<ExternalDiffFiles>();
    return ExternalDiffFiles{local.value(), remote.value(), title(oldPath, older.name), title(file.path, newer.name)};
  }
  // An unmerged path has no single index version; its older side is HEAD's.
  const bool unmerged = file.changeType == ChangeType::unmerged;
  const Side older{unmerged ? QStringLiteral("HEAD") : CheckoutFileVersionGitCommand::indexRevision(), oldPath,
                   unmerged ? QStringLiteral("HEAD") : QStringLiteral("index"), file.isNew || !file.tracked};
  auto local = writeSide(module, older, folder);
  if (!local) return local.mapError<ExternalDiffFiles>();
  const QString working = QDir(module.repositoryPath).filePath(file.path);
  QString remote = working;
  if (deleted || !QFileInfo::exists(working)) {
    auto empty = writeSide(module, Side{QString(), file.path, QStringLiteral("deleted"), true}, folder);
    if (!empty) return empty.mapError<ExternalDiffFiles>();
    remote = empty.value();
  }
  return ExternalDiffFiles{local.value(), remote, title(oldPath, older.name), title(file.path, QStringLiteral("working tree"))};
}

namespace {

// Opens the prepared sides in the tool, or says why they could not be prepared.
std::optional<QString> launch(const GitModule& module, const ChangedFile& file, const MergeTool::Launch& tool,
                              const GitResult<ExternalDiffFiles>& files) {
  if (!files) {
    const QString text = QStringLiteral("Cannot prepare '") + file.path + QStringLiteral("' for the diff tool: ") + describe(files.error());
    LOG_ERROR(text);
    return text;
  }
  const ExternalDiffFiles& sides = files.value();
  return MergeTool::diff(tool, sides.remote, sides.local, sides.localTitle, sides.remoteTitle, module.repositoryPath);
}

}  // namespace

std::optional<QString> ExternalDiff::run(const GitModule& module, const ChangedFile& file, bool amend,
                                         const Preferences& preferences) {
  const auto tool = MergeTool::activeTool(false, preferences);
  if (const QString* failure = std::get_if<QString>(&tool)) return *failure;
  const auto files = prepareFiles(module, file, amend, newFolder());
  return launch(module, file, std::get<MergeTool::Launch>(tool), files);
}

GitResult<ExternalDiffFiles> ExternalDiff::prepareRevisionFiles(const GitModule& module, const QString& sha,
                                                                const std::optional<QString>& parent, const ChangedFile& file,
                                                                const QString& folder) {
  const QString oldPath = file.oldPath.value_or(file.path);
  const Side older{parent.value_or(QString()), oldPath, parent ? parent->left(7) : QStringLiteral("none"),
                   !parent || file.changeType == ChangeType::added};
  const Side newer{sha, file.path, sha.left(7), file.changeType == ChangeType::deleted};
  auto local = writeSide(module, older, folder);
  if (!local) return local.mapError<ExternalDiffFiles>();
  auto remote = writeSide(module, newer, folder);
  if (!remote) return remote.mapError<ExternalDiffFiles>();
  return ExternalDiffFiles{local.value(), remote.value(), title(oldPath, older.name), title(file.path, newer.name)};
}

std::optional<QString> ExternalDiff::runForRevision(const GitModule& module, const QString& sha, const std::optional<QString>& parent,
                                                    const ChangedFile& file, const Preferences& preferences) {
  const auto tool = MergeTool::activeTool(false, preferences);
  if (const QString* failure = std::get_if<QString>(&tool)) return *failure;
  const auto files = prepareRevisionFiles(module, sha, parent, file, newFolder());
  return launch(module, file, std::get<MergeTool::Launch>(tool), files);
}
