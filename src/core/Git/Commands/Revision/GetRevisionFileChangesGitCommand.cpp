#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"

#include "Consts.h"
#include "Git/Commands/Submodules/GetSubmoduleContentGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/Cancelable.h"
#include "Logging/AdvancedLogger.h"
#include "Models/FileContent/BinaryDiffFileContent.h"
#include "Models/FileContent/FileChangeClassifier.h"
#include "Models/FileContent/LfsFileContent.h"
#include "Models/FileContent/TextDiffFileContent.h"
#include "Models/FileContent/UnknownBinaryFileContent.h"

namespace {

using namespace FileChangeClassifier;

struct Sides {
  QString oldObject;  // "<otherSha>:<old path>"
  QString newObject;  // "<sha>:<path>"
};

Sides sidesOf(const QString& sha, const QString& otherSha, const ChangedFile& file) {
  return {otherSha + QLatin1Char(':') + file.oldPath.value_or(file.path), sha + QLatin1Char(':') + file.path};
}

GitDataResponse readObject(const GitModule& module, const QStringList& command, const QString& object) {
  return GitRequest(module, command + QStringList{object}).executeData();
}

std::optional<QByteArray> dataOf(const GitDataResponse& response) {
  if (!response.isSuccess()) return std::nullopt;
  return response.data;
}

std::optional<LfsPointer> pointerOf(const std::optional<QByteArray>& bytes) {
  if (!bytes) return std::nullopt;
  const auto text = decodeUtf8(*bytes);
  if (!text || !LfsPointer::isPointerText(*text)) return std::nullopt;
  return LfsPointer::parse(*text);
}

// Both sides through the clean-to-smudge filters, so an LFS file shows its real bytes.
DiffFileContentPtr filteredBinary(const GitModule& module, const ChangedFilePtr& file, const Sides& sides) {
  const QStringList command{QStringLiteral("cat-file"), QStringLiteral("--filters")};
  return std::make_shared<BinaryDiffFileContent>(file, dataOf(readObject(module, command, sides.oldObject)),
                                                 dataOf(readObject(module, command, sides.newObject)));
}

GitResult<DiffFileContentPtr> imageContent(const GitModule& module, const ChangedFilePtr& file, const Sides& sides) {
  const QStringList show{QStringLiteral("show")};
  const GitDataResponse oldSide = readObject(module, show, sides.oldObject);
  const GitDataResponse newSide = readObject(module, show, sides.newObject);
  if (!oldSide.isSuccess() && !newSide.isSuccess()) return failureResult<DiffFileContentPtr>(oldSide);
  const auto oldPointer = pointerOf(dataOf(oldSide));
  const auto newPointer = pointerOf(dataOf(newSide));
  if (oldPointer || newPointer) return DiffFileContentPtr(std::make_shared<LfsFileContent>(file, oldPointer, newPointer, true));
  return filteredBinary(module, file, sides);
}

DiffFileContentPtr lfsContent(const GitModule& module, const ChangedFilePtr& file, const Sides& sides) {
  const QStringList show{QStringLiteral("show")};
  const auto oldPointer = pointerOf(dataOf(readObject(module, show, sides.oldObject)));
  const auto newPointer = pointerOf(dataOf(readObject(module, show, sides.newObject)));
  if (oldPointer || newPointer) {
    return std::make_shared<LfsFileContent>(file, oldPointer, newPointer, isImageFile(file->path));
  }
  return filteredBinary(module, file, sides);
}

std::optional<qint64> objectSize(const GitModule& module, const QString& object) {
  const GitResponse response = GitRequest(module, {QStringLiteral("cat-file"), QStringLiteral("-s"), object}).execute(true);
  if (!response.isSuccess()) return std::nullopt;
  bool ok = false;
  const qint64 size = response.output.trimmed().toLongLong(&ok);
  return ok ? std::optional<qint64>(size) : std::nullopt;
}

}  // namespace

QStringList GetRevisionFileChangesGitCommand::arguments(const QString& sha, const QString& otherSha, const ChangedFile& file,
                                                        const DiffSettings& settings) {
  QStringList args{QStringLiteral("--no-pager"), QStringLiteral("diff"), QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"),
                   QStringLiteral("--src-prefix=a/"), QStringLiteral("--dst-prefix=b/"), QStringLiteral("--submodule=short"),
                   otherSha, sha};
  if (file.oldPath) args << QStringLiteral("--find-renames");
  if (settings.showEntireFile) {
    args << QStringLiteral("--inter-hunk-context=100000") << QStringLiteral("--unified=100000");
  } else {
    args << QStringLiteral("--unified=%1").arg(settings.effectiveContextSize());
  }
  // Not --ignore-all-space as in the working-directory diff: the two views differ here on purpose.
  if (settings.ignoreWhitespaces) args << QStringLiteral("--ignore-space-change");
  args << QStringLiteral("--") << file.path;
  if (file.oldPath) args << *file.oldPath;
  return args;
}

GitResult<DiffFileContentPtr> GetRevisionFileChangesGitCommand::execute(const GitModule& module, const QString& sha,
                                                                        const std::optional<QString>& otherSha,
                                                                        const ChangedFilePtr& file, const DiffSettings& settings,
                                                                        Cancelable* progress) {
  QString other = otherSha.value_or(sha + QStringLiteral("~1"));
  auto result = executeInternal(module, sha, other, file, settings, progress);
  const auto* unknown = result.errorAs<Error::GitUnknownError>();
  if (!otherSha && unknown && unknown->error.contains(QStringLiteral("fatal: bad revision"))) {
    // A root commit has no parent: it is compared with the empty tree.
    other = Consts::Git::emptyTreeSha;
    result = executeInternal(module, sha, other, file, settings, progress);
  }
  if (!result.isSuccess() && !result.errorAs<Error::Canceled>()) {
    LOG_ERROR(QStringLiteral("Can't get changes for '%1' between '%2' and '%3'").arg(file->path, other, sha));
  }
  return result;
}

GitResult<DiffFileContentPtr> GetRevisionFileChangesGitCommand::executeInternal(const GitModule& module, const QString& sha,
                                                                                const QString& otherSha, const ChangedFilePtr& file,
                                                                                const DiffSettings& settings, Cancelable* progress) {
  if (progress && progress->isCanceled()) return Error::Canceled{};
  const Sides sides = sidesOf(sha, otherSha, *file);
  if (isImageFile(file->path)) return imageContent(module, file, sides);

  const GitResponse response = GitRequest(module, arguments(sha, otherSha, *file, settings)).execute(true, progress);
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<DiffFileContentPtr>(response);
  const QString& diff = response.output;
  if (LfsPointer::isPointerText(diff)) return lfsContent(module, file, sides);
  if (isBinaryDiff(diff)) {
    return DiffFileContentPtr(std::make_shared<UnknownBinaryFileContent>(file, objectSize(module, sides.oldObject),
                                                                         objectSize(module, sides.newObject)));
  }
  if (const Submodule* submodule = file->changedSubmodule()) {
    const auto shas = parseSubmoduleDiff(diff, false);
    const auto submoduleModule = GetSubmoduleContentGitCommand::openSubmodule(module, submodule->path);
    if (shas && submoduleModule) return GetSubmoduleContentGitCommand::execute(module, *submoduleModule, *submodule, file, *shas);
  }
  return DiffFileContentPtr(std::make_shared<TextDiffFileContent>(file, diff));
}
