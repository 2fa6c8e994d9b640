#pragma once
// One row of the commit list, decorated lazily by the list's view model.
#include <vector>

#include "Models/DecoratedReference.h"
#include "Models/Revision.h"

enum class AheadBehindState { none, ahead, behind };

class DecoratedRevision {
 public:
  RevisionPtr revision;
  bool isHead = false;
  bool isReachable = false;  // reachable from HEAD
  AheadBehindState aheadBehind = AheadBehindState::none;
  std::vector<DecoratedReference> references;
  bool isCollapsed = false;
};
