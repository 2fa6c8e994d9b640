#pragma once
#include "Models/CategoryRecord.h"
#include "Models/RepositoryManager/RepositoryManagerFolderItem.h"

// One of the user's categories.
class RepositoryManagerDirectoryItem : public RepositoryManagerFolderItem {
 public:
  explicit RepositoryManagerDirectoryItem(CategoryRecord record) : RepositoryManagerFolderItem(record.name), record(std::move(record)) {}

  CategoryRecord record;
};
