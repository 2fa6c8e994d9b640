#pragma once
// What a change of the working copy or the index resolves to: a text diff, two images,
// two LFS pointers, two sizes of an opaque binary, or a submodule's two commits.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/FileContent/DiffFileContent.h"
#include "Models/FileContent/DiffSettings.h"
#include "Models/GitModule.h"

struct GetWorkingDirectoryFileChangesGitCommand {
  // Where getFileContent reads a file from.
  enum FileSource : int { workingCopy = 1, index = 2, head = 4, indexOrHead = 6 };

  // The diff of the file; baseTree matters only for a staged file under amend.
  static QStringList arguments(const ChangedFile& file, bool amend, const DiffSettings& settings, const QString& baseTree);
  // The patch that export and apply use: full index lines and binary data.
  static QStringList patchArguments(const ChangedFile& file, bool amend, const QString& baseTree);
  // "HEAD^" when HEAD has a parent, else the empty tree: what an amended commit is compared to.
  static QString amendBaseTree(const GitModule& module);

  static GitResult<DiffFileContentPtr> execute(const GitModule& module, const ChangedFilePtr& file, bool amend,
                                               const DiffSettings& settings);
  // Bytes of the file from the given source; nothing for an unknown source or a failed read.
  static std::optional<QByteArray> getFileContent(const GitModule& module, const QString& filename, int status);
};
