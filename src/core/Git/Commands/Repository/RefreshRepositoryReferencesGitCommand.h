#pragma once
// The references of a refresh: HEAD again only when logs/HEAD moved, the namespaces
// that the bits name again, everything else carried over from the previous snapshot.
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/GitModuleSettings.h"
#include "Models/RepositoryReferences.h"
#include "Models/Subdomain.h"

class JobProgress;

struct RefreshRepositoryReferencesGitCommand {
  // `old` absent reads everything. A failed for-each-ref fails the read; a failed
  // rev-parse of HEAD means a repository without commits.
  static GitResult<RepositoryReferences> execute(const GitModule& module, const RepositoryReferences* old, Subdomain subdomains,
                                                 const GitModuleSettings& settings, JobProgress& progress);

  // `fresh` from a read limited to the namespaces of `subdomains`, plus the references of
  // `old` whose namespace wasn't read (bisect marks too, which only a read of all three
  // namespaces lists). Sorted by full reference, as the reader sorts.
  static ReferenceList consolidate(const ReferenceList& old, const ReferenceList& fresh, Subdomain subdomains);

  // A filter of exactly the previously active branch is bound to it: when another branch
  // becomes active the filter moves there (shown by the snapshot, stored by the main
  // thread with storeFollowedFilter). Absent when the filter stays as it is.
  static std::optional<QStringList> filterFollowingActiveBranch(const RepositoryReferences* old, const RepositoryReferences& fresh,
                                                                const QStringList& filter);
  // Writes the filter that followed the active branch from `old` to `fresh` (`filter`
  // being the one the refresh read) to the repository's settings, unless the user changed
  // it meanwhile. Main thread only, as every writer of the settings. True when written.
  static bool storeFollowedFilter(const GitModule& module, const RepositoryReferences* old, const RepositoryReferences& fresh,
                                  const QStringList& filter);
};
