#include "Git/Commands/GitFlow/GetGitFlowSettingsGitCommand.h"

#include "Consts.h"
#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

QStringList GetGitFlowSettingsGitCommand::arguments() {
  return {QStringLiteral("config"), QStringLiteral("--get-regexp"), QStringLiteral("gitflow")};
}

GitResult<std::optional<GitFlowSettings>> GetGitFlowSettingsGitCommand::execute(const GitModule& module) {
  // Most repositories have no Git Flow; their failing run is no news for the log.
  const GitResponse response = GitRequest(module, arguments()).execute(true);
  if (!response.isSuccess()) return failureResult<std::optional<GitFlowSettings>>(response);
  return parse(response.output);
}

GitResult<std::optional<GitFlowSettings>> GetGitFlowSettingsGitCommand::parse(const QString& output) {
  struct Field {
    const QString& key;
    QString GitFlowSettings::*member;
    bool found = false;
  };
  Field fields[] = {
      {Consts::GitFlow::masterBranch, &GitFlowSettings::masterBranch},
      {Consts::GitFlow::developBranch, &GitFlowSettings::developBranch},
      {Consts::GitFlow::featurePrefix, &GitFlowSettings::featurePrefix},
      {Consts::GitFlow::releasePrefix, &GitFlowSettings::releasePrefix},
      {Consts::GitFlow::hotfixPrefix, &GitFlowSettings::hotfixPrefix},
      {Consts::GitFlow::versionTag, &GitFlowSettings::versionTag},
  };
  GitFlowSettings settings;
  for (const QStringView line : QStringView(output).split(u'\n', Qt::SkipEmptyParts)) {
    // "gitflow.prefix.versiontag " is the key of an empty value, so split at the
    // first blank and keep what follows as it is.
    const qsizetype blank = line.indexOf(u' ');
    if (blank <= 0) {
      LOG_ERROR(QStringLiteral("Cannot parse gitflow settings in config line '%1'").arg(line));
      continue;
    }
    const QStringView key = line.first(blank);
    for (Field& field : fields) {
      if (key == field.key) {
        settings.*field.member = line.sliced(blank + 1).toString();
        field.found = true;
      }
    }
  }
  for (const Field& field : fields) {
    if (!field.found) return Error::CannotParse{QStringLiteral("gitflow is not properly installed")};
  }
  return std::optional<GitFlowSettings>(settings);
}
