#pragma once
// Git Flow's settings from the repository's config; all six keys must be there.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitFlowSettings.h"
#include "Models/GitModule.h"

class GetGitFlowSettingsGitCommand {
 public:
  // A repository without Git Flow fails; the refresh reads that as "no Git Flow".
  static GitResult<std::optional<GitFlowSettings>> execute(const GitModule& module);

  static QStringList arguments();
  // "<key> <value>" lines; other keys are passed over, a line without a blank is logged.
  // Fails with cannotParse("gitflow is not properly installed") unless all six keys are found.
  static GitResult<std::optional<GitFlowSettings>> parse(const QString& output);
};
