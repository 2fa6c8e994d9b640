#pragma once
// The issue-tracker rules of a repository, in order, and their links in a text.
#include <QString>
#include <vector>

#include "Models/Bugtracker/BugtrackerLinkDefinition.h"

struct BugtrackerLink {
  qsizetype start = 0;   // UTF-16 units
  qsizetype length = 0;
  QString url;
  bool operator==(const BugtrackerLink&) const = default;
};

struct BugtrackerCollection {
  std::vector<BugtrackerLinkDefinitionPtr> bugtrackers;

  // Every match of every rule, rule by rule in the collection's order.
  std::vector<BugtrackerLink> links(const QString& text) const;
};
