#pragma once
#include <QCryptographicHash>
#include <memory>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Models/FileContent/BinaryDiffFileContent.h"
#include "Models/FileContent/LfsFileContent.h"
#include "Models/FileContent/SubmoduleDiffFileContent.h"
#include "Models/FileContent/TextDiffFileContent.h"
#include "Models/FileContent/UnknownBinaryFileContent.h"
#include "support/TempRepository.h"

// The entries the status read gives for a path, as the views would hand them over.
inline ChangedFilePtr statusEntry(const TempRepository& repo, const QString& path, bool staged) {
  const auto submodules = GetSubmodulesGitCommand::execute(repo.module());
  const auto status = GetChangedFilesGitCommand::execute(repo.module(), submodules.isSuccess() ? submodules.value() : SubmoduleList{},
                                                         false, false);
  if (status.isFailure()) return nullptr;
  for (const ChangedFilePtr& file : status.value().changedFiles) {
    if (file->path == path && file->staged == staged) return file;
  }
  return nullptr;
}

// Shares ownership: the result is usually a temporary.
template <typename T>
std::shared_ptr<const T> contentAs(const GitResult<DiffFileContentPtr>& result) {
  return result.isSuccess() ? std::dynamic_pointer_cast<const T>(result.value()) : nullptr;
}

inline QString diffText(const GitResult<DiffFileContentPtr>& result) {
  const auto text = contentAs<TextDiffFileContent>(result);
  return text ? text->diffString : QStringLiteral("<not a text diff>");
}

inline QString sha256(const QByteArray& bytes) {
  return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}
inline LfsPointer pointerOf(const QByteArray& bytes) { return {sha256(bytes), bytes.size()}; }

// The two sides of a change shown as sizes, as images or as LFS pointers (and whether an
// image); nothing when the change is shown another way.
using Sizes = std::pair<std::optional<qint64>, std::optional<qint64>>;
using Images = std::pair<std::optional<QByteArray>, std::optional<QByteArray>>;
using Pointers = std::tuple<std::optional<LfsPointer>, std::optional<LfsPointer>, bool>;
inline std::optional<Sizes> sizesOf(const GitResult<DiffFileContentPtr>& result) {
  const auto content = contentAs<UnknownBinaryFileContent>(result);
  return content ? std::optional(Sizes{content->oldSize, content->newSize}) : std::nullopt;
}
inline std::optional<Images> imagesOf(const GitResult<DiffFileContentPtr>& result) {
  const auto content = contentAs<BinaryDiffFileContent>(result);
  return content ? std::optional(Images{content->old, content->new_}) : std::nullopt;
}
inline std::optional<Pointers> pointersOf(const GitResult<DiffFileContentPtr>& result) {
  const auto content = contentAs<LfsFileContent>(result);
  return content ? std::optional(Pointers{content->old, content->current, content->isImage}) : std::nullopt;
}

// The change of a path in the working tree or the index, as the lists hand it over.
inline GitResult<DiffFileContentPtr> workingChange(const TempRepository& repo, const QString& path, bool staged,
                                                   DiffSettings settings = {}) {
  const ChangedFilePtr file = statusEntry(repo, path, staged);
  if (!file) return Error::Generic{QStringLiteral("no status entry for ") + path};
  return GetWorkingDirectoryFileChangesGitCommand::execute(repo.module(), file, false, settings);
}

// Bytes that git takes for binary: NULs throughout.
inline QByteArray binaryBytes(int size, char seed) {
  QByteArray bytes(size, '\0');
  for (int i = 0; i < size; i += 3) bytes[i] = static_cast<char>(seed + i % 50);
  return bytes;
}

inline void useLfs(const TempRepository& repo, const QString& pattern) {
  repo.git({"lfs", "install", "--local"});
  repo.git({"lfs", "track", pattern});
}
