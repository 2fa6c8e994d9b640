#include "Repository/OutsideChange.h"

#include <QStringList>

namespace {

// Marker files of an operation in progress: merge, cherry-pick, revert, bisect, rebase.
bool isStateFile(const QString& path) {
  static const QStringList files{QStringLiteral("MERGE_HEAD"),       QStringLiteral("MERGE_MSG"),
                                 QStringLiteral("MERGE_MODE"),       QStringLiteral("CHERRY_PICK_HEAD"),
                                 QStringLiteral("REVERT_HEAD"),      QStringLiteral("REBASE_HEAD"),
                                 QStringLiteral("AUTO_MERGE"),       QStringLiteral("BISECT_LOG"),
                                 QStringLiteral("BISECT_START"),     QStringLiteral("BISECT_TERMS"),
                                 QStringLiteral("BISECT_EXPECTED_REV")};
  static const QStringList folders{QStringLiteral("rebase-merge"), QStringLiteral("rebase-apply"), QStringLiteral("sequencer")};
  if (files.contains(path)) return true;
  const QString top = path.section(QLatin1Char('/'), 0, 0);
  return folders.contains(top);
}

const Subdomain kState = Subdomain::repositoryState() | Subdomain::changedFiles();

}  // namespace

Subdomain OutsideChange::inGitDirectory(const QString& path) {
  // Git writes "<file>.lock" and renames it over the file: the rename is the change.
  if (path.isEmpty() || path.endsWith(QLatin1String(".lock"))) return Subdomain::none();
  if (path == QLatin1String("HEAD")) {
    // A checkout: the branch, the files and any state of the work tree.
    return Subdomain::head() | Subdomain::localBranches() | kState;
  }
  if (path == QLatin1String("logs/HEAD")) return Subdomain::head();
  if (path == QLatin1String("index")) return Subdomain::changedFiles();
  if (path == QLatin1String("packed-refs")) return Subdomain::references() | Subdomain::revisions();
  if (path == QLatin1String("refs/stash") || path == QLatin1String("logs/refs/stash")) return Subdomain::stashes();
  if (path.startsWith(QLatin1String("refs/heads/"))) return Subdomain::localBranches() | Subdomain::revisions();
  if (path.startsWith(QLatin1String("refs/remotes/"))) return Subdomain::remoteBranches() | Subdomain::revisions();
  if (path.startsWith(QLatin1String("refs/tags/"))) return Subdomain::tags() | Subdomain::revisions();
  if (path.startsWith(QLatin1String("refs/bisect/"))) return Subdomain::references() | kState;
  // Remotes, upstreams of branches and the Git Flow prefixes live there.
  if (path == QLatin1String("config")) return Subdomain::remotes() | Subdomain::gitFlowSettings() | Subdomain::localBranches();
  if (path == QLatin1String("hooks/pre-push")) return Subdomain::gitLfsInitialized();
  if (isStateFile(path)) return kState;
  return Subdomain::none();
}

Subdomain OutsideChange::inWorkTree(const QString& path) {
  if (path.isEmpty() || path == QLatin1String(".git") || path.startsWith(QLatin1String(".git/"))) return Subdomain::none();
  if (path == QLatin1String(".gitmodules")) return Subdomain::submodules() | Subdomain::changedFiles();
  return Subdomain::changedFiles();
}
