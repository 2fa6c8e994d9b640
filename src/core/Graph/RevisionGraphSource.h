#pragma once
// What the revision graph is built from: the loaded history and references of one
// repository snapshot, and the display options that shape the visible rows.
#include <memory>

#include "Models/RepositoryReferences.h"
#include "Models/Revision.h"
#include "Models/StashRevision.h"

struct RevisionGraphOptions {
  bool hideStashes = false;
  bool hideRemoteBranches = false;
  bool hideTags = false;
  bool showFirstParent = false;

  bool operator==(const RevisionGraphOptions&) const = default;
};

struct RevisionGraphSource {
  RepositoryReferences references;
  // Shared with the snapshot; a refresh that keeps the history keeps this list.
  std::shared_ptr<const RevisionList> revisions;
  StashRevisionList stashes;
  RevisionGraphOptions options;
  // Older commits exist than the history holds: the list says so at its end.
  bool historyCut = false;
};
