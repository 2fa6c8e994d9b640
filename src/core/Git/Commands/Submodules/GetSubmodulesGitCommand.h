#pragma once
// The submodules that ".gitmodules" names.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Submodule.h"

class GetSubmodulesGitCommand {
 public:
  // No ".gitmodules", or one without paths, gives an empty list.
  static GitResult<SubmoduleList> execute(const GitModule& module);

  static QStringList arguments();
  // "submodule.<name>.path <path>" lines; any other line makes no submodule.
  static SubmoduleList parse(const QString& output);
};
