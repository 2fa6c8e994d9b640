#include "Models/RepositoryManager/RepositoryManagerTree.h"

#include <QHash>
#include <QSet>

#include "Models/AppSettings.h"
#include "Models/RepositoryManager/RepositoryManagerDirectoryItem.h"
#include "Models/RepositoryManager/RepositoryManagerRepositoryItem.h"

namespace {

using DirectoryMap = QHash<int64_t, std::shared_ptr<RepositoryManagerDirectoryItem>>;

// True when parentId's chain of parents leads back to childId; such rows can only come
// from a damaged file, and linking them would make a loop of owners.
bool wouldLoop(const DirectoryMap& directories, int64_t childId, int64_t parentId) {
  QSet<int64_t> seen;
  for (int64_t current = parentId; !seen.contains(current); ) {
    if (current == childId) return true;
    seen.insert(current);
    const auto it = directories.constFind(current);
    if (it == directories.cend() || !(*it)->record.parentId) return false;
    current = *(*it)->record.parentId;
  }
  // A loop further up that does not pass through the child.
  return false;
}

}  // namespace

RepositoryManagerTree RepositoryManagerTree::build(const std::vector<CategoryRecord>& categories,
                                                   const std::vector<RepositoryRecordPtr>& repositories,
                                                   const std::vector<RepositoryRecordPtr>& recent) {
  RepositoryManagerTree tree;
  tree.repositories = std::make_shared<RepositoryManagerCategoryItem>(QStringLiteral("Repositories"));
  tree.recent = std::make_shared<RepositoryManagerCategoryItem>(QStringLiteral("Recent Repositories"));

  DirectoryMap directories;
  for (const CategoryRecord& category : categories) directories.insert(category.id, std::make_shared<RepositoryManagerDirectoryItem>(category));

  for (const CategoryRecord& category : categories) {
    const auto item = directories.value(category.id);
    const bool nested = category.parentId && directories.contains(*category.parentId) && !wouldLoop(directories, category.id, *category.parentId);
    if (nested) {
      directories.value(*category.parentId)->children.push_back(item);
    } else {
      tree.repositories->children.push_back(item);
    }
  }

  for (const RepositoryRecordPtr& record : repositories) {
    auto item = std::make_shared<RepositoryManagerRepositoryItem>(record);
    if (record->categoryId && directories.contains(*record->categoryId)) {
      directories.value(*record->categoryId)->children.push_back(std::move(item));
    } else {
      tree.repositories->children.push_back(std::move(item));
    }
  }

  // Never opened (found by a scan) is not recent.
  for (const RepositoryRecordPtr& record : recent) {
    if (tree.recent->children.size() >= size_t(recentCount)) break;
    if (record->lastOpened) tree.recent->children.push_back(std::make_shared<RepositoryManagerRepositoryItem>(record));
  }
  return tree;
}

RepositoryManagerTree RepositoryManagerTree::load(AppSettings& settings) {
  return build(settings.getCategories(), settings.getRepositories(), settings.getRecentRepositories());
}
