#include "Models/Bugtracker/GetBugtrackerDefinitions.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "Logging/AdvancedLogger.h"
#include "Models/RepositoryUrl.h"

namespace {

struct Section {
  QString type;
  QString name;
  std::optional<QString> regex;
  std::optional<QString> url;
};

void finish(const std::optional<Section>& section, BugtrackerLinkDefinition::Level level,
            std::vector<BugtrackerLinkDefinitionPtr>& rules) {
  if (!section || section->type != QLatin1String("issuetracker") || !section->regex || !section->url) return;
  if (auto rule = BugtrackerLinkDefinition::make(section->name, level, *section->regex, *section->url)) rules.push_back(rule);
}

}  // namespace

std::vector<BugtrackerLinkDefinitionPtr> GetBugtrackerDefinitions::parseIssues(const QString& text,
                                                                                BugtrackerLinkDefinition::Level level) {
  static const QRegularExpression header(QStringLiteral("^\\s*\\[(.+?)\\s\"(.+?)\"\\]"));
  static const QRegularExpression entry(QStringLiteral("(\\S+)\\s?=\\s?\"(.+)\""));
  std::vector<BugtrackerLinkDefinitionPtr> rules;
  std::optional<Section> section;
  for (const QString& raw : text.split(QLatin1Char('\n'))) {
    const QString line = raw.trimmed();
    // Only a leading '#' makes a comment: an expression may hold one inside its quotes.
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
    if (line.startsWith(QLatin1Char('['))) {
      finish(section, level, rules);
      section.reset();
      const QRegularExpressionMatch match = header.match(line);
      if (!match.hasMatch()) {
        LOG_WARNING(QStringLiteral("Cannot parse section in '%1'").arg(line));
        continue;
      }
      if (match.capturedStart(2) < 0) {
        LOG_WARNING(QStringLiteral("Cannot parse section name in '%1'").arg(line));
        continue;
      }
      section = Section{match.captured(1), match.captured(2), {}, {}};
      if (section->type != QLatin1String("issuetracker")) LOG_INFO(QStringLiteral("skip section '%1'").arg(section->name));
      continue;
    }
    if (!section || section->type != QLatin1String("issuetracker")) continue;
    const QRegularExpressionMatch match = entry.match(line);
    if (!match.hasMatch()) {
      LOG_WARNING(QStringLiteral("Cannot parse name in '%1'").arg(line));
      continue;
    }
    if (match.capturedStart(2) < 0) {
      LOG_WARNING(QStringLiteral("Cannot parse value in '%1'").arg(line));
      continue;
    }
    const QString key = match.captured(1);
    if (key == QLatin1String("regex")) {
      section->regex = match.captured(2);
    } else if (key == QLatin1String("url")) {
      section->url = match.captured(2);
    } else {
      LOG_WARNING(QStringLiteral("Unknown section entry: '%1'").arg(key));
    }
  }
  finish(section, level, rules);
  return rules;
}

std::vector<BugtrackerLinkDefinitionPtr> GetBugtrackerDefinitions::loadIssues(const QString& path,
                                                                               BugtrackerLinkDefinition::Level level) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return parseIssues(QString::fromUtf8(file.readAll()), level);
}

BugtrackerCollection GetBugtrackerDefinitions::execute(const GitModule& module, bool showBugtrackerLinks,
                                                       const QStringList& remoteUrls) {
  BugtrackerCollection collection;
  if (!showBugtrackerLinks) return collection;
  collection.bugtrackers = loadIssues(QDir(module.repositoryPath).filePath(QStringLiteral(".issuetracker")),
                                      BugtrackerLinkDefinition::Level::shared);
  for (auto& rule : loadIssues(QDir(module.gitDirectoryUrl).filePath(QStringLiteral("issuetracker")),
                               BugtrackerLinkDefinition::Level::local)) {
    collection.bugtrackers.push_back(std::move(rule));
  }
  if (!collection.bugtrackers.empty()) return collection;

  for (const QString& remoteUrl : remoteUrls) {
    const RepositoryUrl url(remoteUrl);
    if (url.remoteType != RemoteType::gitHub()) continue;
    const auto webPage = url.webPageUrl();
    if (!webPage) continue;
    if (auto rule = BugtrackerLinkDefinition::make(systemRuleName(), BugtrackerLinkDefinition::Level::system,
                                                   gitHubIssueExpression(), *webPage + QStringLiteral("/issues/$1"))) {
      collection.bugtrackers.push_back(rule);
    }
    break;
  }
  return collection;
}
