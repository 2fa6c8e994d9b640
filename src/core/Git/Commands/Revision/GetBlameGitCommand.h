#pragma once
// Who last changed each line of a file at a revision, read from git's porcelain blame.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/BlameChunk.h"
#include "Models/GitModule.h"

class Cancelable;

struct GetBlameGitCommand {
  static QStringList arguments(const QString& sha, const QString& path);
  static GitResult<BlameChunkList> execute(const GitModule& module, const QString& sha, const QString& path,
                                           Cancelable* cancelation = nullptr);
  static GitResult<BlameChunkList> parse(const QString& output);
};
