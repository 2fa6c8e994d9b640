#pragma once
#include <memory>
#include <vector>

#include "Models/RepositoryManager/RepositoryManagerItem.h"

// A node that holds others.
class RepositoryManagerFolderItem : public RepositoryManagerItem {
 public:
  using RepositoryManagerItem::RepositoryManagerItem;

  std::vector<std::shared_ptr<RepositoryManagerItem>> children;
};
