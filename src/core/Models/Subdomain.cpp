#include "Models/Subdomain.h"

#include <QStringList>
#include <array>
#include <utility>

namespace {

using Named = std::pair<Subdomain, const char*>;

// Compound names first, so that a list of parts uses the widest name that fits.
constexpr std::array<Named, 19> kNames = {{
    {Subdomain::all(), ".all"},
    {Subdomain::repositoryData(), ".repositoryData"},
    {Subdomain::references(), ".references"},
    {Subdomain::branches(), ".branches"},
    {Subdomain::head(), ".head"},
    {Subdomain::remotes(), ".remotes"},
    {Subdomain::revisions(), ".revisions"},
    {Subdomain::stashes(), ".stashes"},
    {Subdomain::submodules(), ".submodules"},
    {Subdomain::gitFlowSettings(), ".gitFlowSettings"},
    {Subdomain::bugTrackerSettings(), ".bugTrackerSettings"},
    {Subdomain::customCommands(), ".customCommands"},
    {Subdomain::referenceSettings(), ".referenceSettings"},
    {Subdomain::localBranches(), ".localBranches"},
    {Subdomain::remoteBranches(), ".remoteBranches"},
    {Subdomain::tags(), ".tags"},
    {Subdomain::repositoryState(), ".repositoryStatus"},
    {Subdomain::changedFiles(), ".changedFiles"},
    {Subdomain::gitLfsInitialized(), ".gitLfsInitialized"},
}};

}  // namespace

QString Subdomain::description() const {
  if (rawValue == 0) return QStringLiteral(".none");
  for (const auto& [set, name] : kNames) {
    if (set == *this) return QString::fromLatin1(name);
  }
  QStringList parts;
  Subdomain rest = *this;
  for (const auto& [set, name] : kNames) {
    if (set == all()) continue;
    if (rest.contains(set)) {
      parts << QString::fromLatin1(name);
      rest = rest.subtracting(set);
    }
  }
  if (!rest.isEmpty()) parts << QString::number(rest.rawValue);
  return QLatin1Char('[') + parts.join(QStringLiteral(", ")) + QLatin1Char(']');
}
