#include "Models/RepositoryCommitSettings.h"

#include <QDir>

#include "Git/Commands/Config/GetConfigValueGitCommand.h"
#include "Git/Commands/Config/SetConfigValueGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetCommitTemplate.h"
#include "Git/Commands/WorkingDirectory/SetCommitTemplateGitCommand.h"
#include "Models/GitModuleSettings.h"

namespace {
GitResult<QString> readValue(const GitModule& module, const QString& key, ConfigLocation location) {
  const auto result = GetConfigValueGitCommand::execute(module, key, location);
  if (!result) return result.mapError<QString>();
  return result.value().value_or(QString());
}

// An emptied field removes the key, so the global value applies again.
GitVoidResult writeValue(const GitModule& module, const QString& key, const QString& value) {
  const QString trimmed = value.trimmed();
  return SetConfigValueGitCommand::execute(module, key, trimmed.isEmpty() ? std::nullopt : std::optional<QString>(trimmed),
                                           ConfigLocation::local);
}
}  // namespace

GitResult<RepositoryCommitSettings> RepositoryCommitSettings::load(const GitModule& module) {
  RepositoryCommitSettings settings;
  const std::pair<QString*, std::pair<QString, ConfigLocation>> reads[] = {
      {&settings.userName, {QStringLiteral("user.name"), ConfigLocation::local}},
      {&settings.userEmail, {QStringLiteral("user.email"), ConfigLocation::local}},
      {&settings.globalUserName, {QStringLiteral("user.name"), ConfigLocation::global}},
      {&settings.globalUserEmail, {QStringLiteral("user.email"), ConfigLocation::global}},
  };
  for (const auto& [field, read] : reads) {
    const GitResult<QString> value = readValue(module, read.first, read.second);
    if (!value) return value.mapError<RepositoryCommitSettings>();
    *field = value.value();
  }
  const auto templatePath = GetCommitTemplate::execute(module, ConfigLocation::local);
  if (!templatePath) return templatePath.mapError<RepositoryCommitSettings>();
  settings.templatePath = templatePath.value();
  if (settings.templatePath) {
    settings.commitTemplate = GetCommitTemplate::readTemplate(module, *settings.templatePath).value_or(QString());
  }
  const GitModuleSettings stored = GitModuleSettings::load(module);
  settings.signingKey = stored.signingKey.value_or(QString());
  settings.signOff = stored.signOff;
  return settings;
}

GitVoidResult RepositoryCommitSettings::save(const GitModule& module, const RepositoryCommitSettings& before,
                                             const RepositoryCommitSettings& after) {
  if (after.userName.trimmed() != before.userName.trimmed()) {
    if (auto written = writeValue(module, QStringLiteral("user.name"), after.userName); !written) return written;
  }
  if (after.userEmail.trimmed() != before.userEmail.trimmed()) {
    if (auto written = writeValue(module, QStringLiteral("user.email"), after.userEmail); !written) return written;
  }
  if (after.commitTemplate != before.commitTemplate) {
    if (after.commitTemplate.isEmpty()) {
      // The file stays where it is; only the repository stops using it.
      const auto unset = SetConfigValueGitCommand::execute(module, QStringLiteral("commit.template"), std::nullopt,
                                                           ConfigLocation::local);
      if (!unset) return unset;
    } else {
      // A template named relative or by "~/" is rewritten at the default place instead.
      const bool absolute = before.templatePath && QDir::isAbsolutePath(*before.templatePath);
      const auto written =
          SetCommitTemplateGitCommand::execute(module, absolute ? before.templatePath : std::nullopt, after.commitTemplate);
      if (!written) return written;
    }
  }
  return Unit{};
}

void RepositoryCommitSettings::saveSigning(const GitModule& module, const RepositoryCommitSettings& before,
                                           const RepositoryCommitSettings& after) {
  const QString key = after.signingKey.trimmed();
  if (key == before.signingKey.trimmed() && after.signOff == before.signOff) return;
  GitModuleSettings stored = GitModuleSettings::load(module);
  stored.signingKey = key.isEmpty() ? std::nullopt : std::optional<QString>(key);
  stored.signOff = after.signOff;
  stored.save(module);
}
