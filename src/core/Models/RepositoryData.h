#pragma once
// The data snapshot of a repository: references, history, remotes, stashes and the
// settings around them. Built whole by a refresh and never changed afterwards; a refresh
// that didn't read a part hands the old part on (the history list by reference).
#include <QDateTime>
#include <memory>
#include <optional>
#include <vector>

#include "Models/Bugtracker/BugtrackerCollection.h"
#include "Models/CustomCommands/CustomCommand.h"
#include "Models/GitFlowSettings.h"
#include "Models/GitModuleSettings.h"
#include "Models/Remote.h"
#include "Models/RepositoryReferences.h"
#include "Models/Revision.h"
#include "Models/StashRevision.h"
#include "Models/Submodule.h"

struct RepositoryData {
  QDateTime lastUpdateTime;
  bool topoOrder = true;
  GitModuleSettings settings;
  RepositoryReferences references;
  std::shared_ptr<const RevisionList> revisions = std::make_shared<const RevisionList>();
  std::vector<Remote> remotes;
  BugtrackerCollection bugtrackers;
  CustomCommandList customCommands;
  StashRevisionList stashes;
  SubmoduleList submodules;
  std::optional<QDateTime> gitmodulesUpdateTime;  // of ".gitmodules" when it was read
  std::optional<GitFlowSettings> gitFlowSettings;
  std::optional<QDateTime> configUpdateTime;      // of the Git directory's "config" when it was read
  bool showReflogInRevisionList = false;
  bool showFirstParent = false;
  // The most commits the history was read with; it was cut when it holds that many.
  int revisionLimit = 0;
  std::optional<QDateTime> gitLfsUpdateTime;      // of "hooks/pre-push" when it was read
  bool gitLfsInitialized = false;
};

using RepositoryDataPtr = std::shared_ptr<const RepositoryData>;

// Element-wise equality of the commands, not of the pointers.
bool sameCustomCommands(const CustomCommandList& a, const CustomCommandList& b);
