#include "Models/Bugtracker/BugtrackerCollection.h"

std::vector<BugtrackerLink> BugtrackerCollection::links(const QString& text) const {
  std::vector<BugtrackerLink> links;
  for (const auto& rule : bugtrackers) {
    auto it = rule->regex.globalMatch(text);
    while (it.hasNext()) {
      const QRegularExpressionMatch match = it.next();
      if (match.capturedLength() == 0) continue;  // an empty match would make an empty link
      links.push_back({match.capturedStart(), match.capturedLength(), rule->url(match)});
    }
  }
  return links;
}
