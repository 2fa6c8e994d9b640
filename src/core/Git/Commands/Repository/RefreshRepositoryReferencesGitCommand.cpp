#include "Git/Commands/Repository/RefreshRepositoryReferencesGitCommand.h"

#include <algorithm>

#include "Extensions/FileModificationTime.h"
#include "Git/Commands/Repository/GetHeadGitCommand.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Jobs/JobProgress.h"

namespace {

const QString kHeadStep = QStringLiteral("GetHeadGitCommand");
const QString kReferencesStep = QStringLiteral("GetReferencesGitCommand");

// Which bit reads the namespace of a reference. Bisect marks have none: a limited read
// never lists them, so they stay until a read of every namespace.
Subdomain namespaceOf(const Reference& reference) {
  switch (reference.kind()) {
    case Reference::Kind::localBranch: return Subdomain::localBranches();
    case Reference::Kind::remoteBranch: return Subdomain::remoteBranches();
    case Reference::Kind::tag: return Subdomain::tags();
    case Reference::Kind::head:
    case Reference::Kind::bisectMark:
    case Reference::Kind::plain: break;
  }
  return Subdomain::none();
}

QSet<QString> setOf(const QStringList& list) { return QSet<QString>(list.begin(), list.end()); }

}  // namespace

ReferenceList RefreshRepositoryReferencesGitCommand::consolidate(const ReferenceList& old, const ReferenceList& fresh,
                                                                 Subdomain subdomains) {
  if (subdomains.contains(Subdomain::references())) return fresh;
  ReferenceList result = fresh;
  for (const ReferencePtr& reference : old) {
    if (!reference) continue;
    const Subdomain space = namespaceOf(*reference);
    if (space.isEmpty() || !subdomains.intersects(space)) result.push_back(reference);
  }
  std::stable_sort(result.begin(), result.end(),
                   [](const ReferencePtr& a, const ReferencePtr& b) { return a->fullReference < b->fullReference; });
  return result;
}

GitResult<RepositoryReferences> RefreshRepositoryReferencesGitCommand::execute(const GitModule& module, const RepositoryReferences* old,
                                                                               Subdomain subdomains, const GitModuleSettings& settings,
                                                                               JobProgress& progress) {
  // A repository that doesn't keep a reflog has no logs/HEAD; then HEAD is read each time.
  const auto headTime = fileModificationTime(module.gitDirectoryPath(QStringLiteral("logs/HEAD")));
  std::optional<QString> head;
  if (old && headTime && old->headUpdateTime == headTime) {
    head = old->head;
  } else {
    progress.start(kHeadStep);
    const auto read = GetHeadGitCommand::execute(module);
    progress.end(kHeadStep);
    if (read && !read.value().isEmpty()) head = read.value();
  }
  if (progress.isCanceled()) return Error::Canceled{};

  ReferenceList all;
  if (old && !subdomains.intersects(Subdomain::references())) {
    all = old->all;
  } else {
    const Subdomain read = old ? subdomains & Subdomain::references() : Subdomain::references();
    progress.start(kReferencesStep);
    auto fresh = GetReferencesGitCommand::execute(module, read);
    progress.end(kReferencesStep);
    if (!fresh) return fresh.mapError<RepositoryReferences>();
    all = old ? consolidate(old->all, fresh.value(), read) : std::move(fresh).value();
  }
  auto references = RepositoryReferences::make(std::move(head), headTime, std::move(all), setOf(settings.filterReferences),
                                               setOf(settings.starredReferences));
  if (const auto followed = filterFollowingActiveBranch(old, references, settings.filterReferences)) {
    // Only shown here: the main thread stores it when it takes the snapshot (see
    // storeFollowedFilter), being the settings' only writer.
    references.filtered = setOf(*followed);
  }
  return references;
}

bool RefreshRepositoryReferencesGitCommand::storeFollowedFilter(const GitModule& module, const RepositoryReferences* old,
                                                                 const RepositoryReferences& fresh, const QStringList& filter) {
  const auto followed = filterFollowingActiveBranch(old, fresh, filter);
  if (!followed) return false;
  // Stored only if nobody changed the filter since the refresh loaded the settings.
  GitModuleSettings current = GitModuleSettings::load(module);
  if (current.filterReferences != filter) return false;
  current.filterReferences = *followed;
  current.save(module);
  return true;
}

std::optional<QStringList> RefreshRepositoryReferencesGitCommand::filterFollowingActiveBranch(const RepositoryReferences* old,
                                                                                            const RepositoryReferences& fresh,
                                                                                            const QStringList& filter) {
  if (!old || !old->activeBranch || !fresh.activeBranch) return std::nullopt;
  const QString& previous = old->activeBranch->fullReference;
  const QString& current = fresh.activeBranch->fullReference;
  if (previous == current || filter != QStringList{previous}) return std::nullopt;
  return QStringList{current};
}
