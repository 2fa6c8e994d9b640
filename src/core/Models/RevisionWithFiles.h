#pragma once
#include <vector>

#include "Models/ChangedFile.h"
#include "Models/Revision.h"

// A revision and the files it changed: one entry of a file's history.
struct RevisionWithFiles {
  RevisionPtr revision;
  std::vector<ChangedFilePtr> changedFiles;
};
