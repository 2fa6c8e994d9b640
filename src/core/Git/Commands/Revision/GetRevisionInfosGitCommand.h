#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/RevisionInfo.h"

// Sha, author, date and full message of the given revisions, and the resolution of a
// name to one sha.
struct GetRevisionInfosGitCommand {
  // Ends each record; a NUL can't stand in a commit message.
  static QString recordTerminator() { return QStringLiteral("%x00"); }

  static QStringList arguments(const QStringList& shas);
  // Records that RevisionInfo can't read are logged and left out.
  static std::vector<RevisionInfo> parse(const QString& output);
  static GitResult<std::vector<RevisionInfo>> execute(const GitModule& module, const QStringList& shas);
};
