#pragma once
// Reads the issue-tracker rules of a repository: ".issuetracker" of the work tree
// (shared), then "issuetracker" of the Git directory (local). With neither, a GitHub
// remote gets one rule of its own that links "#123" to the issue.
#include <QString>
#include <QStringList>

#include "Models/Bugtracker/BugtrackerCollection.h"
#include "Models/GitModule.h"

struct GetBugtrackerDefinitions {
  // `showBugtrackerLinks` is the repository's setting: off, nothing is read.
  // `remoteUrls`: the URLs of the repository's remotes, in their order.
  static BugtrackerCollection execute(const GitModule& module, bool showBugtrackerLinks, const QStringList& remoteUrls);

  // The rules of one file, in the git configuration file format:
  //   [issuetracker "Jira"]
  //       regex = "PROJ-(\d+)"
  //       url = "https://jira.example.com/browse/PROJ-$1"
  static std::vector<BugtrackerLinkDefinitionPtr> loadIssues(const QString& path, BugtrackerLinkDefinition::Level level);
  static std::vector<BugtrackerLinkDefinitionPtr> parseIssues(const QString& text, BugtrackerLinkDefinition::Level level);

  static QString systemRuleName() { return QStringLiteral("Global GitHub rule"); }
  static QString gitHubIssueExpression() { return QStringLiteral("#(\\d+)"); }
};
