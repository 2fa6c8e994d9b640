#pragma once
// Writes one version of a file (of the index or of a commit) to a file of our own, as the
// bytes git stores, for an outside tool to read.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct CheckoutFileVersionGitCommand {
  // The version of the index: the empty revision.
  static QString indexRevision() { return {}; }

  // "<revision>:<path>", or ":<path>" for the index.
  static QStringList arguments(const QString& revision, const QString& path);
  // Gives the destination once written.
  static GitResult<QString> execute(const GitModule& module, const QString& revision, const QString& path,
                                    const QString& destination);
};
