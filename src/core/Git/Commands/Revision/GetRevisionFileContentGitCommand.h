#pragma once
// One file at one revision for the plain file view: text, an image, an LFS pointer, or
// an opaque binary of which only the size is told.
#include <QByteArray>
#include <QString>

#include "Git/ResultError.h"
#include "Models/FileContent/Content.h"
#include "Models/GitModule.h"

class Cancelable;

struct GetRevisionFileContentGitCommand {
  static GitResult<ContentPtr> execute(const GitModule& module, const QString& sha, const QString& path);
  // The same for a blob named by its own sha, as a commit's tree lists it.
  static GitResult<ContentPtr> executeBlob(const GitModule& module, const QString& blobSha, const QString& path,
                                           Cancelable* cancelation = nullptr);
  // The classification of bytes already read, for a path.
  static ContentPtr classify(const QString& path, const QByteArray& bytes, bool isStaged = false);
};
