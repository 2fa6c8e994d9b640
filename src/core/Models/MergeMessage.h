#pragma once
#include <optional>

#include "Models/CommitMessage.h"
#include "Models/GitModule.h"

// The message git prepared for a squash or a merge in progress: "SQUASH_MSG" in the
// Git directory, or "MERGE_MSG" when that one is missing or empty.
std::optional<CommitMessage> readMergeMessage(const GitModule& module);
