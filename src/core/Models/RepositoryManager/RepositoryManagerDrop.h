#pragma once
// What a drop in the repository manager's tree does to the registry. The tree shows
// categories before repositories in each folder, categories in "position" order, so a
// drop above or below a category reorders it among its siblings, a drop onto a
// category files the dragged entry inside it, and anything dropped onto a repository
// goes to the folder that holds that repository. The recent list is a copy: nothing
// can be dropped there.
#include <cstdint>
#include <optional>

class AppSettings;

struct RepositoryManagerDrop {
  enum class Kind { repository, recentRepository, category, repositoriesSection, recentSection };
  struct Node {
    Kind kind = Kind::repositoriesSection;
    int64_t id = 0;  // of the repository or category; unused for sections
    bool operator==(const Node&) const = default;
  };
  enum class Position { above, below, onItem };

  // True when the drop may happen; false for one that would do nothing sensible (a
  // section dragged, a drop onto the recent list, a category into itself).
  static bool accepts(const Node& dragged, const Node& target);
  // Applies the drop; false (and nothing changed) when it is refused.
  static bool apply(AppSettings& settings, const Node& dragged, const Node& target, Position position);
};
