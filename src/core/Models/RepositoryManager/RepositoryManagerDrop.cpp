#include "Models/RepositoryManager/RepositoryManagerDrop.h"

#include <algorithm>

#include "Models/AppSettings.h"

namespace {

using Kind = RepositoryManagerDrop::Kind;

std::optional<CategoryRecord> findCategory(const std::vector<CategoryRecord>& categories, int64_t id) {
  const auto it = std::find_if(categories.begin(), categories.end(), [id](const CategoryRecord& c) { return c.id == id; });
  if (it == categories.end()) return std::nullopt;
  return *it;
}

// The folder a drop lands in: a category's id, or nothing for the top level. A stored
// parent of -1 or of a missing category also shows at the top level, and so counts as it.
std::optional<int64_t> shownParent(const std::vector<CategoryRecord>& categories, std::optional<int64_t> parentId) {
  if (parentId && findCategory(categories, *parentId)) return parentId;
  return std::nullopt;
}

std::optional<int64_t> folderOfRepository(AppSettings& settings, const std::vector<CategoryRecord>& categories, int64_t repositoryId) {
  for (const RepositoryRecordPtr& record : settings.getRepositories()) {
    if (record->id == repositoryId) return shownParent(categories, record->categoryId);
  }
  return std::nullopt;
}

bool moveCategoryBeside(AppSettings& settings, const std::vector<CategoryRecord>& categories, int64_t moved,
                        const CategoryRecord& target, bool below) {
  if (moved == target.id) return false;
  // The index is the target's place among the rows with the same stored parent, by
  // position, the moved row included: that is the list the registry renumbers. Passing
  // the stored parent (NULL, -1 or an id) keeps the reorder among exactly those rows.
  int64_t index = 0;
  for (const CategoryRecord& sibling : categories) {
    if (sibling.parentId != target.parentId) continue;
    if (sibling.id == target.id) break;
    ++index;
  }
  if (below) ++index;
  return settings.moveRepositoryCategory(moved, target.parentId, index);
}

}  // namespace

bool RepositoryManagerDrop::accepts(const Node& dragged, const Node& target) {
  if (dragged.kind == Kind::repositoriesSection || dragged.kind == Kind::recentSection) return false;
  if (target.kind == Kind::recentSection || target.kind == Kind::recentRepository) return false;
  if (dragged.kind == Kind::category && target.kind == Kind::category && dragged.id == target.id) return false;
  return true;
}

bool RepositoryManagerDrop::apply(AppSettings& settings, const Node& dragged, const Node& target, Position position) {
  if (!accepts(dragged, target)) return false;
  const std::vector<CategoryRecord> categories = settings.getCategories();

  std::optional<int64_t> folder;  // where the dragged entry goes when it is not reordered
  if (target.kind == Kind::category) {
    const auto record = findCategory(categories, target.id);
    if (!record) return false;
    if (position != Position::onItem) {
      if (dragged.kind == Kind::category) return moveCategoryBeside(settings, categories, dragged.id, *record, position == Position::below);
      folder = shownParent(categories, record->parentId);  // repositories sort by name, not by place
    } else {
      folder = target.id;
    }
  } else if (target.kind == Kind::repository) {
    folder = folderOfRepository(settings, categories, target.id);
  }

  if (dragged.kind == Kind::category) {
    if (!findCategory(categories, dragged.id)) return false;
    return settings.moveRepositoryCategory(dragged.id, folder, std::nullopt);
  }
  return settings.moveRepository(dragged.id, folder);
}
