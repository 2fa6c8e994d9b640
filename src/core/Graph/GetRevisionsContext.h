#pragma once
// The lanes open between two rows, in column order (index = column).
#include <vector>

#include "Models/Sha.h"

struct Line {
  int id = 0;
  Sha nextSha;  // the commit that the lane is heading for

  bool operator==(const Line&) const = default;
};

class GetRevisionsContext {
 public:
  GetRevisionsContext() { lines.reserve(128); }

  std::vector<Line> lines;
};
