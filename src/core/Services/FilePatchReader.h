#pragma once
// The diff text of one file, of a commit or of the working tree, for the diff view.
// Binary, image, LFS and submodule contents are resolved by the file-change commands;
// this reads the plain text patch.
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

class Cancelable;

struct FilePatchReader {
  static constexpr const char* emptyTreeSha = "4b825dc642cb6eb9a060e54bf8d69288fbee4904";  // the same as Consts::Git::emptyTreeSha

  static QStringList revisionArguments(const QString& fromSha, const QString& sha, const ChangedFile& file, int contextSize);
  static QStringList workingTreeArguments(const ChangedFile& file, int contextSize);

  // The file between the commit's first parent (the empty tree for a root) and the commit.
  static GitResult<QString> revision(const GitModule& module, const QString& sha, const std::optional<QString>& parentSha,
                                     const ChangedFile& file, int contextSize, Cancelable* cancel = nullptr);
  // Staged: index against HEAD; unstaged: work tree against the index; an untracked
  // file as a whole new file.
  static GitResult<QString> workingTree(const GitModule& module, const ChangedFile& file, int contextSize, Cancelable* cancel = nullptr);
};
