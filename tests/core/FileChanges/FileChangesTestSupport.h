#pragma once
#include <QCryptographicHash>
#include <memory>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
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

inline QString sha256(const QByteArray& bytes) {
  return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

// Bytes that git takes for binary: NULs throughout.
inline QByteArray binaryBytes(int size, char seed) {
  QByteArray bytes(size, '\0');
  for (int i = 0; i < size; i += 3) bytes[i] = static_cast<char>(seed + i % 50);
  return bytes;
}

inline void useLfs(const TempRepository& repo, const QString& pattern) {
  repo.git({QStringLiteral("lfs"), QStringLiteral("install"), QStringLiteral("--local")});
  repo.git({QStringLiteral("lfs"), QStringLiteral("track"), pattern});
}
