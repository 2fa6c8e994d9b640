#pragma once
// Guards staging: a conflicted file still holding conflict markers must not be staged
// as if it were resolved.
#include "Models/ChangedFile.h"
#include "Models/FileContent/DiffSettings.h"
#include "Models/GitModule.h"

// False when an unmerged file's working-tree diff still shows "<<<<<"; a failed fetch or
// a non-text change lets the file pass.
bool testMergeConflictsResolved(const GitModule& module, const ChangedFileList& files,
                                const DiffSettings& settings = DiffSettings::fromPreferences());
