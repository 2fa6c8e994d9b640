#include "Services/GitInstanceVersions.h"

#include "Git/Commands/Config/GetGitVersionGitCommand.h"

std::vector<GitInstanceVersions::Entry> GitInstanceVersions::read(const std::optional<QString>& customPath) {
  std::vector<GitInstanceType> candidates{GitInstanceType::local(), GitInstanceType::system(), GitInstanceType::brew()};
  if (customPath && !customPath->trimmed().isEmpty()) candidates.push_back(GitInstanceType::custom(customPath->trimmed()));
  std::vector<Entry> entries;
  for (const GitInstanceType& instance : candidates) {
    const GitResult<QString> version = GetGitVersionGitCommand::execute(instance);
    if (version) entries.push_back({instance, version.value()});
  }
  return entries;
}

QString GitInstanceVersions::title(const Entry& entry) {
  if (entry.instance.kind == GitInstanceType::Kind::custom) {
    return QStringLiteral("%1 (%2)").arg(entry.version, entry.instance.launchPath());
  }
  return QStringLiteral("%1 — %2 (%3)").arg(entry.instance.printedName(), entry.version, entry.instance.launchPath());
}
