#pragma once
// One commit of the commit list. Immutable and shared by reference. The layout is kept
// small because a refresh holds the whole visible history (50,000 commits by default):
// binary object names, parents in place, the author shared through an IdentityInterner,
// the subject as compact UTF-8, and the date as Unix seconds.
#include <QDateTime>
#include <QString>
#include <memory>
#include <span>
#include <vector>

#include "Models/CompactText.h"
#include "Models/ParentShas.h"
#include "Models/PersonIdentity.h"
#include "Models/Sha.h"

class Revision {
 public:
  Revision(const Sha& sha, const Sha& treeSha, ParentShas parents, CompactText message,
           std::shared_ptr<const PersonIdentity> author, qint64 authorTime);
  virtual ~Revision() = default;

  // Convenience for tests and callers that hold texts; an invalid hex name gives nothing.
  static std::shared_ptr<const Revision> create(const QString& sha, const QString& treeSha, const QStringList& parents,
                                                const QString& message, const QString& author,
                                                const QString& authorEmail, qint64 authorTime);

  const Sha& sha() const { return sha_; }
  const Sha& treeSha() const { return treeSha_; }
  // In git's order; the first is the first parent. Empty for a root.
  std::span<const Sha> parents() const { return parents_.span(); }
  const ParentShas& parentShas() const { return parents_; }
  // The subject line only.
  QString message() const { return message_.toString(); }
  QByteArrayView messageUtf8() const { return message_.utf8(); }
  const QString& author() const { return author_->name; }
  const QString& authorEmail() const { return author_->email; }
  const std::shared_ptr<const PersonIdentity>& authorIdentity() const { return author_; }
  qint64 authorTime() const { return authorTime_; }
  QDateTime authorDate() const { return QDateTime::fromSecsSinceEpoch(authorTime_, Qt::UTC); }

  virtual bool isStash() const { return false; }

  // Same commit data; a stash also compares its reflog name.
  virtual bool operator==(const Revision& other) const;

 private:
  Sha sha_;
  Sha treeSha_;
  ParentShas parents_;
  qint64 authorTime_ = 0;
  std::shared_ptr<const PersonIdentity> author_;
  CompactText message_;
};

using RevisionPtr = std::shared_ptr<const Revision>;
using RevisionList = std::vector<RevisionPtr>;

// Element-wise equality of the revisions, not of the pointers.
bool sameRevisions(const RevisionList& a, const RevisionList& b);
