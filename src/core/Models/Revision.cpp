#include "Models/Revision.h"

#include <QStringList>

#include "Models/StashRevision.h"

namespace {
const PersonIdentity& emptyIdentity() {
  static const PersonIdentity identity;
  return identity;
}
}  // namespace

Revision::Revision(const Sha& sha, const Sha& treeSha, ParentShas parents, CompactText message,
                   std::shared_ptr<const PersonIdentity> author, qint64 authorTime)
    : sha_(sha), treeSha_(treeSha), parents_(std::move(parents)), authorTime_(authorTime), author_(std::move(author)),
      message_(std::move(message)) {
  // Accessors hand out references to the identity's texts, so there must always be one.
  if (!author_) author_ = std::shared_ptr<const PersonIdentity>(std::shared_ptr<void>(), &emptyIdentity());
}

std::shared_ptr<const Revision> Revision::create(const QString& sha, const QString& treeSha, const QStringList& parents,
                                                 const QString& message, const QString& author,
                                                 const QString& authorEmail, qint64 authorTime) {
  const auto parsedSha = Sha::fromHex(QStringView(sha));
  const auto parsedTree = treeSha.isEmpty() ? std::optional<Sha>(Sha()) : Sha::fromHex(QStringView(treeSha));
  if (!parsedSha || !parsedTree) return nullptr;
  std::vector<Sha> parentShas;
  parentShas.reserve(parents.size());
  for (const QString& parent : parents) {
    const auto parsed = Sha::fromHex(QStringView(parent));
    if (!parsed) return nullptr;
    parentShas.push_back(*parsed);
  }
  return std::make_shared<const Revision>(*parsedSha, *parsedTree, ParentShas(std::span<const Sha>(parentShas)),
                                          CompactText::fromText(message),
                                          std::make_shared<const PersonIdentity>(PersonIdentity{author, authorEmail}),
                                          authorTime);
}

bool Revision::operator==(const Revision& other) const {
  return isStash() == other.isStash() && sha_ == other.sha_ && treeSha_ == other.treeSha_ && parents_ == other.parents_ &&
         authorTime_ == other.authorTime_ && *author_ == *other.author_ && message_ == other.message_;
}

bool StashRevision::operator==(const Revision& other) const {
  if (!Revision::operator==(other)) return false;
  return reflogName_ == static_cast<const StashRevision&>(other).reflogName_;
}

bool sameRevisions(const RevisionList& a, const RevisionList& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const RevisionPtr& x, const RevisionPtr& y) { return x == y || (x && y && *x == *y); });
}

bool sameStashes(const StashRevisionList& a, const StashRevisionList& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const StashRevisionPtr& x, const StashRevisionPtr& y) { return x == y || (x && y && *x == *y); });
}
