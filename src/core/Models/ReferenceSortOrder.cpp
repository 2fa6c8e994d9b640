#include "Models/ReferenceSortOrder.h"

#include "Extensions/NaturalCompare.h"

ReferenceSortOrder referenceSortOrderFromPreference(int value) {
  switch (value) {
    case 1: return ReferenceSortOrder::nameDescending;
    case 2: return ReferenceSortOrder::newestFirst;
    default: return ReferenceSortOrder::name;
  }
}

bool referenceLessThan(const Reference& a, const Reference& b, ReferenceSortOrder order) {
  switch (order) {
    case ReferenceSortOrder::name: return NaturalCompare::compare(a.name, b.name) < 0;
    case ReferenceSortOrder::nameDescending: return NaturalCompare::compare(a.name, b.name) > 0;
    case ReferenceSortOrder::newestFirst:
      if (a.committerDate != b.committerDate) return a.committerDate > b.committerDate;
      return NaturalCompare::compare(a.name, b.name) < 0;
  }
  return false;
}

void sortReferenceList(std::vector<ReferencePtr>& references, ReferenceSortOrder order) { sortReferences(references, order); }
