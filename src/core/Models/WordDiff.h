#pragma once
// The part of a line that changed, for the stronger marks inside removed and added rows.
// Within one change the n-th removed line is paired with the n-th added line; what lies
// between their common beginning and their common end is marked on both. A line that
// changed as a whole (blanks in common don't count, and less than a third in common
// is no common line), or a pair that is only one side's padding, gets no mark, and a
// minified file none at all (such lines are too long to compare on every layout).
#include <vector>

#include "Models/PatchView.h"

namespace WordDiff {

// The marks of the shown lines of a view tree, in text order, as offsets in its text.
std::vector<PatchView::Range> changedSpans(const std::vector<PatchView::FilePatch>& files);

}  // namespace WordDiff
