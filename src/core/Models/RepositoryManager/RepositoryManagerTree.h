#pragma once
// Builds the sidebar of the repository manager from the registry's rows. Rows that
// point at a category that does not exist (or at -1, the root of a scan) are shown at
// the top level rather than lost.
#include <memory>
#include <vector>

#include "Models/CategoryRecord.h"
#include "Models/RepositoryManager/RepositoryManagerCategoryItem.h"
#include "Models/RepositoryRecord.h"

class AppSettings;

struct RepositoryManagerTree {
  static constexpr int recentCount = 5;

  std::shared_ptr<RepositoryManagerCategoryItem> repositories;  // "Repositories"
  std::shared_ptr<RepositoryManagerCategoryItem> recent;        // "Recent Repositories"

  // categories in "position" order, as getCategories() gives them; recent most recent first.
  static RepositoryManagerTree build(const std::vector<CategoryRecord>& categories, const std::vector<RepositoryRecordPtr>& repositories,
                                     const std::vector<RepositoryRecordPtr>& recent);
  static RepositoryManagerTree load(AppSettings& settings);
};
