#pragma once
// All branches, tags and bisect marks from one for-each-ref run.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Reference.h"
#include "Models/Subdomain.h"

struct GetReferencesGitCommand {
  // Only the namespaces whose bits are set; all three set means no pattern at all.
  static QStringList arguments(Subdomain subdomains);
  // One reference per good line, sorted by full reference; bad lines are logged and dropped.
  static ReferenceList parse(const QString& output);
  static GitResult<ReferenceList> execute(const GitModule& module, Subdomain subdomains);
};
