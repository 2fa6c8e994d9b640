#include "Models/RepositoryReferences.h"

RepositoryReferences RepositoryReferences::make(std::optional<QString> head, std::optional<QDateTime> headUpdateTime,
                                                ReferenceList all, QSet<QString> filtered, QSet<QString> starred) {
  RepositoryReferences references;
  references.head = std::move(head);
  references.headUpdateTime = std::move(headUpdateTime);
  references.filtered = std::move(filtered);
  references.starred = std::move(starred);
  references.referencesByFullPath.reserve(static_cast<qsizetype>(all.size()));
  for (const ReferencePtr& reference : all) {
    if (!reference) continue;
    references.referencesByFullPath.insert(reference->fullReference, reference);
    switch (reference->kind()) {
      case Reference::Kind::localBranch: {
        auto branch = std::static_pointer_cast<const LocalBranch>(reference);
        if (branch->isActive && !references.activeBranch) references.activeBranch = branch;
        references.localBranches.push_back(std::move(branch));
        break;
      }
      case Reference::Kind::remoteBranch:
        references.remoteBranches.push_back(std::static_pointer_cast<const RemoteBranch>(reference));
        break;
      case Reference::Kind::tag: references.tags.push_back(std::static_pointer_cast<const Tag>(reference)); break;
      case Reference::Kind::head:
      case Reference::Kind::bisectMark:
      case Reference::Kind::plain: break;
    }
  }
  references.all = std::move(all);
  return references;
}

bool RepositoryReferences::operator==(const RepositoryReferences& other) const {
  return head == other.head && filtered == other.filtered && starred == other.starred && sameReferences(all, other.all);
}
