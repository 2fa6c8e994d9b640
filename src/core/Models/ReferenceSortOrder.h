#pragma once
// The order of branches and tags in the sidebar ("localBranchSortOrder",
// "remoteBranchSortOrder", "tagSortOrder"): 0 by name, 1 by name descending, 2 most
// recently committed first. Names compare without case and with numbers as numbers,
// so "v1.10" follows "v1.9".
#include <memory>
#include <vector>

#include "Models/Reference.h"

enum class ReferenceSortOrder { name = 0, nameDescending = 1, newestFirst = 2 };

ReferenceSortOrder referenceSortOrderFromPreference(int value);

template <typename Ptr>
void sortReferences(std::vector<Ptr>& references, ReferenceSortOrder order);

// Sorts any list of references (kept stable for equal keys).
void sortReferenceList(std::vector<ReferencePtr>& references, ReferenceSortOrder order);
bool referenceLessThan(const Reference& a, const Reference& b, ReferenceSortOrder order);

template <typename Ptr>
void sortReferences(std::vector<Ptr>& references, ReferenceSortOrder order) {
  std::stable_sort(references.begin(), references.end(),
                   [order](const Ptr& a, const Ptr& b) { return referenceLessThan(*a, *b, order); });
}
