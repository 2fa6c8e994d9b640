#pragma once
#include "Models/ChangedFile.h"

// A row of the file lists.
struct ChangedFileEntry {
  ChangedFilePtr changedFile;

  bool operator==(const ChangedFileEntry& other) const {
    return changedFile == other.changedFile || (changedFile && other.changedFile && *changedFile == *other.changedFile);
  }
};
