#pragma once
// The references of one snapshot: every object once in `all`, the same objects again
// in the typed lists and in the lookup by full reference.
#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QString>
#include <optional>
#include <vector>

#include "Models/LocalBranch.h"
#include "Models/Reference.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"

struct RepositoryReferences {
  std::optional<QString> head;               // the sha of HEAD; absent in a repository without commits
  std::optional<QDateTime> headUpdateTime;   // modification time of logs/HEAD when it was read
  ReferenceList all;
  std::vector<LocalBranchPtr> localBranches;
  std::vector<RemoteBranchPtr> remoteBranches;
  std::vector<TagPtr> tags;
  LocalBranchPtr activeBranch;               // null with a detached HEAD
  QSet<QString> filtered;                    // full references the branch filter shows
  QSet<QString> starred;                     // full references the user marked
  QHash<QString, ReferencePtr> referencesByFullPath;

  // Fills the typed lists, the lookup and the active branch (the first active local
  // branch) from `all`.
  static RepositoryReferences make(std::optional<QString> head, std::optional<QDateTime> headUpdateTime, ReferenceList all,
                                   QSet<QString> filtered = {}, QSet<QString> starred = {});

  ReferencePtr reference(const QString& fullReference) const { return referencesByFullPath.value(fullReference); }

  // Compares what a user can see: head, the references by value, filter and stars. The
  // time logs/HEAD was read is bookkeeping and left out.
  bool operator==(const RepositoryReferences& other) const;
};
