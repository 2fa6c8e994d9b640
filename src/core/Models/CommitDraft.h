#pragma once
// The message being composed survives closing the repository: it lives in the
// repository's settings as "draftMessage".
#include "Models/CommitMessage.h"
#include "Models/GitModule.h"

namespace CommitDraft {
CommitMessage load(const GitModule& module);
// Loads the settings, replaces the draft and saves; the other settings stay as they are.
void save(const GitModule& module, const CommitMessage& draft);
void clear(const GitModule& module);
}  // namespace CommitDraft
