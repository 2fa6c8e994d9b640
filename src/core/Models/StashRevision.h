#pragma once
#include <QString>

#include "Models/Revision.h"

// A stash entry. It keeps only its first parent, so that it shows as a side node on
// the commit it was made on.
class StashRevision final : public Revision {
 public:
  StashRevision(const Sha& sha, const Sha& treeSha, ParentShas parents, CompactText message,
                std::shared_ptr<const PersonIdentity> author, qint64 authorTime, QString reflogName)
      : Revision(sha, treeSha, std::move(parents), std::move(message), std::move(author), authorTime),
        reflogName_(std::move(reflogName)) {}

  // "stash@{0}": the name that stash commands pass to git.
  const QString& reflogName() const { return reflogName_; }

  bool isStash() const override { return true; }
  bool operator==(const Revision& other) const override;

 private:
  QString reflogName_;
};

using StashRevisionPtr = std::shared_ptr<const StashRevision>;
using StashRevisionList = std::vector<StashRevisionPtr>;

bool sameStashes(const StashRevisionList& a, const StashRevisionList& b);
