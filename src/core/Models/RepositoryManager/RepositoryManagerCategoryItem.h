#pragma once
#include "Models/RepositoryManager/RepositoryManagerFolderItem.h"

// A fixed section of the sidebar ("Repositories", "Recent Repositories").
class RepositoryManagerCategoryItem : public RepositoryManagerFolderItem {
 public:
  using RepositoryManagerFolderItem::RepositoryManagerFolderItem;
};
