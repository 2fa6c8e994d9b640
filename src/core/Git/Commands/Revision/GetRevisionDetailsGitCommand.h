#pragma once
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/RevisionDetails.h"

// The whole of one commit, read when the user selects it.
struct GetRevisionDetailsGitCommand {
  static QStringList arguments(const QString& sha);
  // Nine fields separated by "±.": sha, author, e-mail, time, committer, e-mail, time,
  // parents, and the full message.
  static GitResult<RevisionDetails> parse(const QString& output);
  static GitResult<RevisionDetails> execute(const GitModule& module, const QString& sha);
};
