#pragma once
// What kinds of change a file list holds, for the badges and buttons of the changes view.
#include "Models/ChangedFile.h"

class FileChangesStatus {
 public:
  int rawValue = 0;

  constexpr FileChangesStatus() = default;
  constexpr explicit FileChangesStatus(int raw) : rawValue(raw) {}

  static constexpr FileChangesStatus unstaged() { return FileChangesStatus(1); }   // tracked, work-tree side
  static constexpr FileChangesStatus staged() { return FileChangesStatus(2); }
  static constexpr FileChangesStatus untracked() { return FileChangesStatus(4); }
  static constexpr FileChangesStatus conflicted() { return FileChangesStatus(8); }
  static constexpr FileChangesStatus ignored() { return FileChangesStatus(16); }

  static FileChangesStatus of(const ChangedFileList& files) {
    FileChangesStatus status;
    for (const auto& file : files) {
      if (file->changeType == ChangedFile::ChangeType::unmerged) status.insert(conflicted());
      else if (file->changeType == ChangedFile::ChangeType::ignored) status.insert(ignored());
      else if (!file->tracked) status.insert(untracked());
      else status.insert(file->staged ? staged() : unstaged());
    }
    return status;
  }

  constexpr bool contains(FileChangesStatus other) const { return (rawValue & other.rawValue) == other.rawValue; }
  constexpr bool isEmpty() const { return rawValue == 0; }
  constexpr void insert(FileChangesStatus other) { rawValue |= other.rawValue; }
  constexpr FileChangesStatus operator|(FileChangesStatus other) const { return FileChangesStatus(rawValue | other.rawValue); }
  constexpr bool operator==(const FileChangesStatus&) const = default;
};
